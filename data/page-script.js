// Runs in every previewed page, in a script world of its own: the page's scripts can neither see nor call it.
// It reports what the user typed into the page, how far the page is scrolled, when the page is ready to be
// seen, and which links the user clicked.
//
// Every reported edit is written into the user's source, so this script believes nothing that the page could
// have done itself. A page's call of execCommand makes the same trusted events as a key press; therefore an
// input counts only when it does what the key before it does, in the text where the caret stood.
(function () {
	"use strict";

	const editPause = 250;
	// How long after the last input the page is looked through for the report, which does not come before.
	const placesPause = 120;
	const scrollPause = 120;
	// How long a page may take to load what it links before it is shown without.
	const patience = 400;

	const handlers = window.webkit.messageHandlers;

	function post(message) {
		handlers.htmlChanged.postMessage(message);
	}

	// Text

	// The engine turns white space beside the caret into other white space; that is not the user's doing.
	function plain(text) {
		return text.replace(/[\t\n\f\r\u00a0]/g, " ");
	}

	function sameText(one, other) {
		return one.length === other.length && (one === other || plain(one) === plain(other));
	}

	function isText(node) {
		return node !== null && node.nodeType === Node.TEXT_NODE;
	}

	function caretNode() {
		const selection = window.getSelection();
		const node = selection && selection.rangeCount > 0 ? selection.anchorNode : null;
		return isText(node) ? node : null;
	}

	// What each edited text node is in the source. The node itself may differ from it in white space.
	const sourceTexts = new WeakMap();
	// Text nodes that were changed in a way that did not reach the source.
	const outOfStep = new WeakSet();

	function sourceText(node) {
		const text = sourceTexts.get(node);
		return text !== undefined && sameText(text, node.data) ? text : node.data;
	}

	// The page as it is written

	// A page's own scripts may copy texts, move them or make new ones. Where a text stands among its equals then
	// says nothing about the source; so the page is read once more, without its scripts, and an edit counts only
	// where the shown text and the written one stand between the same others.

	// The texts of the written page, each with its nodes: nothing before they are known, and never for a page
	// without an address.
	let written = null;
	let isUnknowable = false;
	// Resolves when that is decided.
	let writtenPage = null;
	// What edited texts were when the page was read.
	const textsAsRead = new WeakMap();

	function isSeen(node) {
		return !["script", "style", "noscript"].includes(node.parentNode.localName) && node.data.trim() !== "";
	}

	function textAsRead(node) {
		const text = textsAsRead.get(node);
		return plain(text !== undefined ? text : node.data);
	}

	function readWrittenPage(source) {
		const texts = new Map();
		for (const node of textsIn(new DOMParser().parseFromString(source, "text/html")).filter(isSeen)) {
			const text = plain(node.data);
			if (!texts.has(text))
				texts.set(text, []);
			texts.get(text).push(node);
		}
		written = texts;
	}

	function askForWrittenPage() {
		if (writtenPage === null)
			writtenPage = fetch(address).then(function (answer) { return answer.text(); })
				.then(readWrittenPage).catch(function () { isUnknowable = true; });
	}

	function nextSeenText(node, step) {
		const walker = document.createTreeWalker(node.getRootNode(), NodeFilter.SHOW_TEXT);
		walker.currentNode = node;
		let other = walker[step]();
		while (other !== null && !isSeen(other))
			other = walker[step]();
		return other === null ? "" : textAsRead(other);
	}

	function path(node) {
		const names = [];
		for (let element = node.parentElement; element !== null; element = element.parentElement)
			names.push(element.localName + "#" + element.id);
		return names.join(" ");
	}

	function surroundings(node) {
		return JSON.stringify([path(node), nextSeenText(node, "previousNode"), nextSeenText(node, "nextNode")]);
	}

	// Whether the source is where the shown text comes from, in so far as that can be known; `shown` are the nodes
	// that showed the same text when the page was read.
	function isWritten(node, shown) {
		if (isUnknowable)
			return true;
		if (written === null)
			return shown.length < 2;
		const sources = written.get(textAsRead(node)) || [];
		if (sources.length < 2 && shown.length < 2)
			return sources.length === 1;
		if (sources.length === 1) {
			const place = path(sources[0]);
			const inPlace = shown.filter(function (other) { return path(other) === place; });
			return inPlace.length === 1 && inPlace[0] === node;
		}
		return sources.length === shown.length &&
			surroundings(node) === surroundings(sources[shown.indexOf(node)]);
	}

	// What the user does

	// The last thing that the user did and that may change the text: a key, a menu command or something let fall.
	let intent = null;
	let composing = false;
	// A dead key or an input method: the text that comes of it is none of the keys' own.
	let combining = false;

	function isCombining(key) {
		return key === "Dead" || key === "Compose" || key === "Process" || key === "Unidentified";
	}

	window.addEventListener("keydown", function (event) {
		if (!event.isTrusted)
			return;
		if (isCombining(event.key)) {
			combining = true;
			intent = { event: event, node: caretNode(), combined: true, time: performance.now() };
			return;
		}
		if (["Shift", "Control", "Alt", "AltGraph", "Meta"].includes(event.key))
			return;
		intent = { event: event, node: caretNode(), combined: combining, time: performance.now() };
		combining = false;
	}, true);

	// A menu of the program is about to change the text, of which no event of the page tells. That a menu is asked for
	// does not count: the page could do what it likes then. Tells whether anything is marked.
	window.menuCommandFollows = function () {
		intent = { event: { type: "menu" }, node: caretNode(), combined: false, time: performance.now() };
		return !window.getSelection().isCollapsed;
	};

	// The command was carried out. It may have changed nothing, and the page is not to make use of it later.
	window.menuCommandIsOver = function () {
		if (intent !== null && intent.event.type === "menu")
			intent = null;
	};

	// What falls on a text is put where it falls, wherever the caret was.
	window.addEventListener("drop", function (event) {
		if (event.isTrusted)
			intent = { event: event, node: null, combined: false, time: performance.now() };
	}, true);

	window.addEventListener("compositionstart", function (event) {
		composing = composing || event.isTrusted;
	}, true);

	window.addEventListener("compositionend", function (event) {
		if (event.isTrusted)
			composing = false;
	}, true);

	function intends(intent, event) {
		const source = intent.event;
		const isMenu = source.type === "menu";
		if (source.type === "drop")
			return event.inputType === "insertFromDrop";
		const command = !isMenu && source.ctrlKey;
		switch (event.inputType) {
		case "insertText":
			return intent.combined || (!isMenu && sameText(source.key, event.data || ""));
		case "insertFromPaste":
			return isMenu || (command && source.key.toLowerCase() === "v") ||
				(source.shiftKey && source.key === "Insert");
		case "deleteByCut":
			return isMenu || (command && source.key.toLowerCase() === "x") ||
				(source.shiftKey && source.key === "Delete");
		case "deleteContentBackward":
		case "deleteContentForward":
		case "deleteWordBackward":
		case "deleteWordForward":
		case "deleteSoftLineBackward":
		case "deleteSoftLineForward":
			return isMenu || source.key === "Backspace" || source.key === "Delete";
		default:
			return false;
		}
	}

	function isComposed(event) {
		return composing || /Composition/.test(event.inputType);
	}

	// When the user did what makes the input `event`. A long page takes the engine a while to change, and the user
	// waits from the key on.
	function intentTime(event) {
		return intent === null || isComposed(event) ? performance.now() : intent.time;
	}

	// One key permits one input, and only where the caret was when it was pressed; what falls may do so anywhere.
	function isIntended(event, node) {
		if (!event.isTrusted)
			return false;
		if (isComposed(event))
			return true;
		const last = intent;
		intent = null;
		return last !== null && (last.node === node || last.event.type === "drop") && intends(last, event);
	}

	// Edits

	// The edit that waits for its report: its node, the node's text in the source, how many characters at the
	// node's start and end no input has touched.
	let pending = null;
	// The input that the engine is about to carry out.
	let current = null;
	let editTimer = 0;
	let placesTimer = 0;

	// What the engine changes for an input. A listener of the page's own that hears of the input first has the
	// changes told before this script asks for them.
	let told = [];
	const observer = new MutationObserver(function (records) { told = told.concat(records); });
	// Watches the page from the look ahead to the report.
	const changes = new MutationObserver(heedChanges);

	function insertedText(event) {
		if (event.data !== null)
			return event.data;
		return event.dataTransfer ? event.dataTransfer.getData("text/plain") : "";
	}

	// Beside an insertion at the caret the engine takes out nothing but white space that cannot be seen.
	function mayReplace(event, input, replaced) {
		return !input.atCaret || composing || event.inputType.startsWith("delete") || replaced.trim() === "";
	}

	// Where the text before the caret that stayed ends and the text behind that stayed begins, in the node's
	// new content; nothing when the change is anything else than `event` at the caret.
	function changedStretch(event, input, node) {
		const selection = window.getSelection();
		const range = selection.rangeCount > 0 ? selection.getRangeAt(0) : null;
		// What fell is marked; everything else leaves a caret.
		const mayBeMarked = event.inputType === "insertFromDrop";
		if (range === null || range.startContainer !== node || range.endContainer !== node ||
			!(range.collapsed || mayBeMarked))
			return null;
		const before = input.before;
		const after = node.data;
		const caret = range.endOffset;
		const inserted = event.inputType.startsWith("delete") ? "" : insertedText(event);
		// The caret of an input method may stand anywhere in the text that it composes.
		const first = composing ? caret : Math.max(caret, inserted.length);
		const last = composing ? caret + inserted.length : first;
		for (let end = first; end <= last; ++end) {
			const start = end - inserted.length;
			const tail = after.length - end;
			if (start >= 0 && tail >= 0 && start + tail <= before.length &&
				sameText(after.slice(start, end), inserted) &&
				sameText(after.slice(0, start), before.slice(0, start)) &&
				sameText(after.slice(end), before.slice(before.length - tail)) &&
				mayReplace(event, input, before.slice(start, before.length - tail)))
				return { head: start, tail: tail };
		}
		return null;
	}

	function textsIn(node) {
		if (isText(node))
			return [node];
		const texts = [];
		const walker = document.createTreeWalker(node, NodeFilter.SHOW_TEXT);
		while (walker.nextNode())
			texts.push(walker.currentNode);
		return texts;
	}

	// Whether an input changed more than the text of `node`: added, removed or split nodes, or changed another.
	function isStructural(records, node) {
		return records.some(function (record) {
			return record.type === "childList" ||
				(record.target !== node && !sameText(record.oldValue, record.target.data));
		});
	}

	function leaveToThePage(records, node) {
		for (const record of records) {
			const touched = record.type === "childList" ? Array.from(record.addedNodes) : [record.target];
			touched.flatMap(textsIn).forEach(function (text) { outOfStep.add(text); });
		}
		if (node !== null && current.before !== node.data)
			outOfStep.add(node);
		if (pending !== null && pending.node.data !== pending.shown)
			outOfStep.add(pending.node);
		takePending();
	}

	function takePending() {
		const edit = pending;
		pending = null;
		clearTimeout(editTimer);
		clearTimeout(placesTimer);
		changes.disconnect();
		return edit;
	}

	// From here on what is typed can be reported.
	document.removeEventListener("beforeinput", refuseInput, true);

	document.addEventListener("beforeinput", function (event) {
		askForWrittenPage();
		const node = caretNode();
		const time = intentTime(event);
		const counts = node !== null && !outOfStep.has(node) && isIntended(event, node);
		// Somebody else wrote into the text since the last input.
		if (pending !== null && pending.node.data !== pending.content) {
			outOfStep.add(pending.node);
			takePending();
		}
		current = {
			node: node,
			before: node === null ? "" : node.data,
			atCaret: node !== null && window.getSelection().isCollapsed,
			counts: counts,
			time: time
		};
		told = [];
		observer.observe(document, {
			subtree: true, childList: true, characterData: true, characterDataOldValue: true
		});
	}, true);

	document.addEventListener("input", function (event) {
		const records = told.concat(observer.takeRecords());
		observer.disconnect();
		if (current === null)
			return;
		const node = current.node;
		const stretch = current.counts && !outOfStep.has(node) && !isStructural(records, node)
			? changedStretch(event, current, node) : null;
		if (stretch === null) {
			leaveToThePage(records, node);
			current = null;
			return;
		}
		if (pending !== null && pending.node !== node)
			report();
		if (pending === null) {
			const text = sourceTexts.get(node);
			const before = text !== undefined && sameText(text, current.before) ? text : current.before;
			pending = {
				node: node, before: before, shown: current.before, head: Infinity, tail: Infinity, places: null
			};
			if (!textsAsRead.has(node))
				textsAsRead.set(node, before);
		}
		pending.content = node.data;
		pending.head = Math.min(pending.head, stretch.head, pending.before.length);
		pending.tail = Math.min(pending.tail, stretch.tail, pending.before.length - pending.head);
		const passed = performance.now() - current.time;
		current = null;
		clearTimeout(editTimer);
		clearTimeout(placesTimer);
		placesTimer = setTimeout(lookAhead, placesPause);
		// A page that takes longer than that for a key leaves time for the next one all the same.
		editTimer = setTimeout(function () { writtenPage.then(report); }, Math.max(editPause - passed, placesPause));
	}, true);

	// The index of the edited node among the nodes whose text in the source equals its old one, their number, and
	// the nodes that showed the same when the page was read.
	function findPlaces(edit) {
		const places = { occurrence: -1, total: 0, shown: [] };
		const text = textAsRead(edit.node);
		const walker = document.createTreeWalker(document, NodeFilter.SHOW_TEXT);
		for (let node = walker.nextNode(); node !== null; node = walker.nextNode()) {
			if (node === edit.node)
				places.occurrence = places.total;
			if (node === edit.node || sourceText(node) === edit.before)
				++places.total;
			const mayShow = node.length === text.length || textsAsRead.has(node);
			if (mayShow && textAsRead(node) === text && isSeen(node))
				places.shown.push(node);
		}
		return places;
	}

	// To go through all texts of a long page takes longer than a report should: it is done before, in the pause.
	function lookAhead() {
		if (pending.places !== null)
			return;
		pending.places = findPlaces(pending);
		changes.observe(document, { subtree: true, childList: true, characterData: true });
	}

	// What was found ahead holds for as long as nothing but the edited text changes.
	function heedChanges(records) {
		if (pending !== null && records.some(function (record) {
			return record.type === "childList" || record.target !== pending.node;
		}))
			pending.places = null;
	}

	function report() {
		heedChanges(changes.takeRecords());
		const edit = takePending();
		if (edit === null)
			return;
		const node = edit.node;
		if (!node.isConnected || node.data !== edit.content) {
			outOfStep.add(node);
			return;
		}
		const after = edit.before.slice(0, edit.head) +
			node.data.slice(edit.head, node.data.length - edit.tail) +
			edit.before.slice(edit.before.length - edit.tail);
		if (after === edit.before)
			return;
		const places = edit.places || findPlaces(edit);
		const message = {
			kind: "text", before: edit.before, after: after, occurrence: places.occurrence, total: places.total
		};
		if (isWritten(node, places.shown)) {
			sourceTexts.set(node, after);
		} else {
			message.unwritten = 1;
			outOfStep.add(node);
		}
		post(message);
	}

	// Scrolling

	let scrollTimer = 0;

	function reportScroll() {
		scrollTimer = 0;
		post({ kind: "scroll", x: window.scrollX, y: window.scrollY });
	}

	window.addEventListener("scroll", function () {
		clearTimeout(scrollTimer);
		scrollTimer = setTimeout(reportScroll, scrollPause);
	}, true);

	// The next page is coming; what was not reported by then would be lost.
	window.addEventListener("pagehide", function () {
		report();
		if (scrollTimer !== 0) {
			clearTimeout(scrollTimer);
			reportScroll();
		}
	}, true);

	// Links

	window.addEventListener("click", function (event) {
		const link = event.isTrusted && event.target.closest ? event.target.closest("a[href], area[href]") : null;
		if (link !== null)
			handlers.linkClicked.postMessage({ url: link.href });
	}, true);

	// The first picture

	const loaded = new Promise(function (resolve) {
		if (document.readyState === "complete")
			resolve();
		else
			window.addEventListener("load", resolve);
	});
	const impatient = new Promise(function (resolve) { setTimeout(resolve, patience); });

	function restoreScroll() {
		if (scrollToRestore !== null)
			window.scrollTo(scrollToRestore.x, scrollToRestore.y);
	}

	function tellLaidOut(isNext) {
		handlers.pageLaidOut.postMessage({ isNext: isNext });
	}

	// Before the first picture of this page come none but those of the last one: the next new picture is the page.
	// When half of the page was drawn already, one of those may still be coming; the picture that is drawn now is
	// on its way to the screen when the engine asks for the one after the next.
	function whenPictured(time) {
		if (time === firstPicture)
			tellLaidOut(1);
		else
			requestAnimationFrame(function () { requestAnimationFrame(function () { tellLaidOut(0); }); });
	}

	restoreScroll();
	Promise.race([loaded, impatient]).then(function () {
		restoreScroll();
		if (document.visibilityState === "hidden")
			tellLaidOut(0);
		else
			requestAnimationFrame(whenPictured);
	});
})();
