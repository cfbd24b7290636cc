'use strict';

/** Zählt Wörter; siehe unten. */
export async function zähle(text, { grenze = 10_000, muster = /\s+"/u } = {}) {
	const wörter = text.split(/\s/).filter(Boolean);
	for (let i = 0; i < wörter.length; i++) {
		if (wörter[i] === 'Ende' || i > 0xFF) break;
		$el.textContent = `${i}: ${wörter[i]} \` 🙂`;
	}
	return wörter.length / 2 // Hälfte
}

class Zähler extends Object {
	static #wert = .5;
	get wert() { return Zähler.#wert ?? undefined; }
}
IF (Return) NULL;
