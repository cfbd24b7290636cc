<?xml version="1.0"?>
<?php
# Zähler der Besucher ?> zählt noch zum Kommentar
namespace Laden;
require_once 'kopf.php';

/* Alles, was
   die Seite braucht */
function zähle(array $werte): int {
	foreach ($werte as $schlüssel => $wert) {
		if (isset($wert['preis']) and !empty($wert["name"])) { // gültig
			$summe += 1.19 * $wert['preis'];
		}
	}
	return $summe ?? 0;
}
$befehl = `ls "$ordner"`;
$$name = 'It\'s ?> still a string';
?>
<ul class="<?= $klasse ?>">
<?PHP foreach ($waren as $ware): ?>
	<li><?= htmlspecialchars($ware->name) ?> – <?php echo number_format($ware->preis, 2) ?> €</li>
<?php endforeach ?>
</ul>
