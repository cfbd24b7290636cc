<?php
	$name = trim($_POST['name'] ?? '');
	$nachricht = trim($_POST['nachricht'] ?? '');
	$abgeschickt = $_SERVER['REQUEST_METHOD'] === 'POST';
	$fehler = [];

	if ($abgeschickt && $name === '') {
		$fehler[] = 'Bitte nennen Sie Ihren Namen.';
	}
	if ($abgeschickt && mb_strlen($nachricht) < 10) {
		$fehler[] = 'Bitte schreiben Sie uns ein paar Worte mehr.';
	}

	/* Alles, was jemand eingetippt hat, geht nur hierdurch auf die Seite. */
	function sicher(string $text): string
	{
		return htmlspecialchars($text, ENT_QUOTES, 'UTF-8');
	}
?>
<!DOCTYPE html>
<html lang="de">
<head>
	<meta charset="utf-8">
	<meta name="viewport" content="width=device-width, initial-scale=1">
	<title>Kontakt &ndash; Töpferei Lindenhof</title>
	<link rel="icon" href="/bilder/zeichen.png">
	<link rel="stylesheet" href="css/stil.css">
</head>
<body>
	<header class="kopf">
		<img class="kopfbild" src="bilder/kopf.svg" alt="Drei Gefäße auf einem Brett vor Hügeln">
		<h1>Kontakt</h1>
		<nav>
			<a href="index.html">Start</a>
			<a href="ueber.html">Über uns</a>
			<a class="hier" href="kontakt.php">Kontakt</a>
		</nav>
	</header>

	<main>
<?php if ($abgeschickt && $fehler === []): ?>
		<p class="gruss">Danke, <?= sicher($name) ?>! Wir melden uns.</p>
<?php else: ?>
<?php foreach ($fehler as $zeile): ?>
		<p class="hinweis"><?= sicher($zeile) ?></p>
<?php endforeach; ?>
		<form method="post" action="kontakt.php">
			<p>
				<label for="name">Ihr Name</label>
				<input id="name" name="name" autocomplete="name" value="<?= sicher($name) ?>">
			</p>
			<p>
				<label for="nachricht">Ihre Nachricht</label>
				<textarea id="nachricht" name="nachricht" rows="6"><?= sicher($nachricht) ?></textarea>
			</p>
			<p><button>Abschicken</button></p>
		</form>
<?php endif; ?>
	</main>

	<footer>
		<img src="/bilder/zeichen.png" alt="" width="24" height="24">
		Töpferei Lindenhof &middot; &copy; <?php echo date('Y'); ?>
	</footer>
</body>
</html>
