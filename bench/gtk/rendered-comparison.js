// Looks at a loaded page: at its text, at the box of every element, and at the white space between its words and tags.
// Runs in a script world of its own, as the body of an asynchronous function; the caller adds the call it wants.
"use strict";

const inlineForTheFormatter = new Set(["a", "abbr", "acronym", "b", "bdi", "bdo", "big", "br", "cite", "code", "data",
	"del", "dfn", "em", "font", "i", "img", "input", "ins", "kbd", "label", "map", "mark", "meter", "output",
	"progress", "q", "rp", "rt", "ruby", "s", "samp", "small", "span", "strong", "sub", "sup", "time", "tt", "u",
	"var", "wbr"]);
// What is in them is not laid out in lines of text.
const opaque = new Set(["head", "script", "style", "template", "noscript", "textarea", "select"]);
const comment = "<!---->";
// HTML's own: a no-break space is text.
const whiteSpace = /[\t\n\f\r ]+/g;

function pause(milliseconds) {
	return new Promise((resolve) => setTimeout(resolve, milliseconds));
}

// Where a script has scrolled to depends on the time it took.
function scrollToStart() {
	for (const element of document.querySelectorAll("*")) {
		if (element.scrollTop !== 0 || element.scrollLeft !== 0)
			element.scrollTo({ top: 0, left: 0, behavior: "instant" });
	}
}

// Waits for what still changes after the load: fonts, animations, scripts with timers. Some pages never come to rest.
async function settle() {
	await Promise.race([document.fonts.ready, pause(2000)]);
	let seen = "";
	for (let look = 0, same = 0; look < 40 && same < 3; ++look) {
		await pause(100);
		scrollToStart();
		const now = JSON.stringify(boxes());
		same = now === seen ? same + 1 : 0;
		seen = now;
	}
}

function describe(element) {
	const id = element.id ? "#" + element.id : "";
	const classes = [...element.classList].slice(0, 2).map((name) => "." + name).join("");
	return element.localName + id + classes;
}

function path(element) {
	const names = [];
	for (let at = element; at !== null; at = at.parentElement)
		names.unshift(describe(at));
	return names.slice(-4).join(" > ");
}

function box(element) {
	const { x, y, width, height } = element.getBoundingClientRect();
	return [x, y, width, height].map((pixels) => Math.round(pixels * 10) / 10);
}

// Children before their parents, so that the first difference is the innermost one.
function elementsInnermostFirst(element, elements = []) {
	for (const child of element.children)
		elementsInnermostFirst(child, elements);
	elements.push(element);
	return elements;
}

function boxes() {
	return elementsInnermostFirst(document.documentElement).map((element) => [path(element), ...box(element)]);
}

function renderedText() {
	return document.body ? document.body.innerText : document.documentElement.innerText;
}

// The page as words and tags, and before each of them the white space: its text, the element it stands in, where it
// stands, and whether it takes up room.
class Sequence {
	constructor() {
		this.tokens = [];
		this.gaps = [];
		this.pending = { text: "", parts: [] };
		this.walk(document.documentElement);
	}

	add(token, container, element, place) {
		this.tokens.push({ name: token, element });
		this.gaps.push({ ...this.pending, container, place });
		this.pending = { text: "", parts: [] };
	}

	walk(element) {
		const parent = element.parentNode;
		this.add("<" + element.localName, parent, element, { parent, before: element });
		if (!opaque.has(element.localName) && getComputedStyle(element).display !== "none") {
			for (const child of element.childNodes)
				this.walkChild(child, element);
		}
		this.add("</" + element.localName, element, element, { parent: element, before: null });
	}

	walkChild(child, element) {
		if (child.nodeType === Node.ELEMENT_NODE)
			this.walk(child);
		else if (child.nodeType === Node.TEXT_NODE)
			this.walkText(child, element);
		else
			this.add(comment, element, null, { parent: element, before: child });
	}

	walkText(node, element) {
		let end = 0;
		for (const match of node.data.matchAll(whiteSpace)) {
			this.addWord(node, end, match.index, element);
			end = match.index + match[0].length;
			this.pending.text += match[0];
			this.pending.parts.push({ node, start: match.index, end });
		}
		this.addWord(node, end, node.data.length, element);
	}

	addWord(node, start, end, element) {
		if (start < end)
			this.add(node.data.slice(start, end), element, null, { text: node, offset: start });
	}
}

function isKept(container) {
	return container instanceof Element && getComputedStyle(container).whiteSpaceCollapse !== "collapse";
}

// Asked of white space at the edge of a text only: within it, there is some before and after the formatting.
function takesRoom(gap) {
	const range = document.createRange();
	return gap.parts.some(({ node, start, end }) => {
		if (start > 0 && end < node.data.length)
			return false;
		range.setStart(node, start);
		range.setEnd(node, end);
		return [...range.getClientRects()].some((rectangle) => rectangle.width > 0);
	});
}

async function collect() {
	await settle();
	const sequence = new Sequence();
	return JSON.stringify({
		text: renderedText(),
		boxes: boxes(),
		tokens: sequence.tokens.map((token) => token.name),
		gaps: sequence.gaps.map((gap) => gap.text),
		roomy: sequence.gaps.map((gap) => takesRoom(gap) ? 1 : 0),
	});
}

// What the first lines that differ hold where they part, or twice nothing.
function differingLines(before, after) {
	const linesBefore = before.split("\n");
	const linesAfter = after.split("\n");
	const index = linesAfter.findIndex((line, at) => line !== linesBefore[at]);
	const at = index < 0 ? linesAfter.length : index;
	const lines = [linesBefore[at] ?? "", linesAfter[at] ?? ""];
	let same = 0;
	while (same < lines[0].length && lines[0][same] === lines[1][same])
		++same;
	return lines.map((line) => line.slice(Math.max(0, same - 20), same + 20));
}

// How far, in pixels, an edge or a size of a box has moved.
function farthest(before, after = before) {
	const moved = Math.max(...[1, 2, 3, 4].map((at) => Math.abs(before[at] - after[at])));
	return Math.round(moved * 10) / 10;
}

function compareRendering(before, text, after) {
	const differing = before.boxes.flatMap((old, index) =>
		JSON.stringify(old) === JSON.stringify(after[index]) ? [] : [index]);
	const sameCount = before.boxes.length === after.length;
	const first = differing[0];
	const [lineBefore, lineAfter] = differingLines(before.text, text);
	return {
		textDiffers: before.text !== text,
		lineBefore,
		lineAfter,
		elements: before.boxes.length,
		differingBoxes: differing.length + (sameCount ? 0 : Math.max(0, after.length - before.boxes.length)),
		farthest: Math.max(0, ...differing.map((index) => farthest(before.boxes[index], after[index]))),
		element: first === undefined ? "" : before.boxes[first][0],
		boxBefore: first === undefined ? [] : before.boxes[first].slice(1),
		boxAfter: first === undefined ? [] : (after[first] ?? []).slice(1),
	};
}

function isSame(rendering) {
	return !rendering.textDiffers && rendering.differingBoxes === 0;
}

// Written without ids and the many classes that scripts and generators make up for single elements.
function withStyle(element, property) {
	return element.localName + " {" + property + ": " + getComputedStyle(element)[property] + "}";
}

// What the formatter lays out on lines of its own; white space then appears beside it.
function isLaidOutOnLines(token) {
	return token !== undefined && token.element !== null && !inlineForTheFormatter.has(token.element.localName);
}

function neighbourName(token) {
	if (token.element !== null)
		return token.element.localName;
	return token.name === comment ? "a comment" : "text";
}

// Why a gap differs, told by its neighbours.
function cause(before, gap, previous, token) {
	if (isKept(gap.container)) {
		const where = withStyle(gap.container, "white-space");
		if (before === "")
			return "style keeps white space: line added in " + where;
		if (gap.text === "")
			return "style keeps white space: trimmed in " + where;
		return "style keeps white space: runs changed in " + where;
	}
	if (before !== "" && gap.text !== "")
		return "other white space between " + neighbourName(previous) + " and " + neighbourName(token);
	const change = before === "" ? "appears" : "vanishes";
	const neighbour = [token, previous].find(isLaidOutOnLines);
	if (previous?.name === comment || token.name === comment)
		return "white space " + change + " beside a comment";
	return "white space " + change +
		(neighbour ? " beside " + withStyle(neighbour.element, "display") : " between inline content");
}

// Gives the gap the text it had before the formatting.
function restore(gap, text) {
	if (gap.parts.length > 0) {
		for (const part of [...gap.parts].reverse())
			part.node.replaceData(part.start, part.end - part.start, part === gap.parts[0] ? text : "");
	} else if (gap.place.text) {
		gap.place.text.insertData(gap.place.offset, text);
	} else {
		gap.place.parent.insertBefore(document.createTextNode(text), gap.place.before);
	}
}

function gapChanges(before, sequence) {
	return sequence.gaps.flatMap((gap, index) => {
		const old = before.gaps[index];
		if (old === gap.text || gap.container === document || opaque.has(gap.container.localName))
			return [];
		const kind = cause(old, gap, sequence.tokens[index - 1], sequence.tokens[index]);
		const cameOrWent = old === "" || gap.text === "";
		return [{ gap, before: old, kind, cameOrWent, roomBefore: before.roomy[index] === 1 }];
	});
}

function roomyChanges(before, sequence) {
	return gapChanges(before, sequence).filter(({ gap, cameOrWent, roomBefore }) =>
		isKept(gap.container) || cameOrWent && (roomBefore || takesRoom(gap)));
}

// The words and tags where two pages part, or null when they have the same.
function differingContent(before, after) {
	const mismatch = before.findIndex((name, index) => name !== after[index]);
	if (mismatch < 0 && before.length === after.length)
		return null;
	const at = mismatch < 0 ? before.length : mismatch;
	return [before, after].map((tokens) => tokens.slice(Math.max(0, at - 5), at + 5).join(" "));
}

// Puts white space back as it was before the formatting and counts, by kind, what made a difference. Always from the
// last to the first, so that the offsets of those to come stay true.
class Causes {
	constructor(before, rendering) {
		this.before = before;
		this.rest = rendering;
		this.counts = {};
	}

	count({ kind }) {
		this.counts[kind] = (this.counts[kind] ?? 0) + 1;
	}

	// What takes up room, again and again since what is put back may let other white space take up room.
	async undoRoomy() {
		for (let round = 0; round < 5 && !isSame(this.rest); ++round) {
			const changes = roomyChanges(this.before, new Sequence()).reverse();
			if (changes.length === 0)
				return;
			for (const change of changes) {
				this.count(change);
				restore(change.gap, change.before);
			}
			await this.look();
		}
	}

	async undoOneByOne() {
		const signs = this.signsOfDifference();
		let seen = signs();
		for (const change of gapChanges(this.before, new Sequence()).reverse()) {
			restore(change.gap, change.before);
			const now = signs();
			if (now !== seen)
				this.count(change);
			seen = now;
		}
		await this.look();
	}

	// Looks at little of what differs, for it is asked after every single change.
	signsOfDifference() {
		const elements = elementsInnermostFirst(document.documentElement).filter((element, index) =>
			JSON.stringify(box(element)) !== JSON.stringify(this.before.boxes[index]?.slice(1))).slice(0, 20);
		const text = this.rest.textDiffers ? renderedText : () => "";
		return () => text() + JSON.stringify(elements.map(box));
	}

	async look() {
		await settle();
		this.rest = compareRendering(this.before, renderedText(), boxes());
	}
}

// `collected` is what collect() gave for the page as it was before the formatting. The causes are proven by undoing
// them in the loaded page, which must then look as it did before.
async function compare(collected) {
	await settle();
	const before = JSON.parse(collected);
	const rendering = compareRendering(before, renderedText(), boxes());
	if (isSame(rendering))
		return JSON.stringify({ same: true, ...rendering });

	const content = differingContent(before.tokens, new Sequence().tokens.map((token) => token.name));
	if (content !== null)
		return JSON.stringify({ same: false, ...rendering, causes: {}, proof: "none", rest: content });

	const causes = new Causes(before, rendering);
	await causes.undoRoomy();
	if (!isSame(causes.rest))
		await causes.undoOneByOne();
	return JSON.stringify({ same: false, ...rendering, causes: causes.counts, rest: causes.rest,
		proof: isSame(causes.rest) ? "white space put back" : "none" });
}
