// Begrüßung nach der Tageszeit und die Auswahl im Laden.

function gruss(stunde) {
	if (stunde < 11) {
		return "Guten Morgen";
	}
	return stunde < 18 ? "Guten Tag" : "Guten Abend";
}

function istGeoeffnet(jetzt) {
	const tag = jetzt.getDay();
	const stunde = jetzt.getHours();
	if (tag === 6) {
		return stunde >= 9 && stunde < 13;
	}
	return tag >= 3 && tag <= 5 && stunde >= 10 && stunde < 18;
}

const zeile = document.getElementById("gruss");
if (zeile) {
	const jetzt = new Date();
	const laden = istGeoeffnet(jetzt) ? "Der Laden ist gerade geöffnet." : "Der Laden ist gerade geschlossen.";
	zeile.textContent = `${gruss(jetzt.getHours())}! ${laden}`;
}

const knoepfe = document.querySelectorAll("button[data-zeige]");

function zeige(art) {
	for (const karte of document.querySelectorAll(".karte")) {
		karte.hidden = art !== "" && karte.dataset.art !== art;
	}
	for (const knopf of knoepfe) {
		knopf.setAttribute("aria-pressed", String(knopf.dataset.zeige === art));
	}
}

for (const knopf of knoepfe) {
	knopf.addEventListener("click", () => zeige(knopf.dataset.zeige));
}
if (knoepfe.length > 0) {
	zeige("");
}
