// Runs in every previewed page before anything of it is there, in the page script's world.
//
// Whoever makes a page editable that is laid out already has the engine style it and lay it out a second time.
// What is typed before the page script can report it must not get into the page. And no script of the page has had
// a chance yet to make its address another.
"use strict";

const address = location.href;

function refuseInput(event) {
	event.preventDefault();
	event.stopImmediatePropagation();
}

// When the engine began its first picture of the page.
let firstPicture = null;
requestAnimationFrame(function (time) { firstPicture = time; });

document.addEventListener("beforeinput", refuseInput, true);
document.designMode = "on";
