// Times htmlparser2's tokenizer alone, with callbacks that do nothing: node htmlparser2.cjs PAGE PASSES
'use strict';

const { readFileSync } = require('node:fs');
const { Tokenizer } = require('htmlparser2');

const [page, passes] = process.argv.slice(2);
const text = readFileSync(page, 'utf8');
const nothing = () => {};
const callbacks = {
    onattribdata: nothing,
    onattribend: nothing,
    onattribentity: nothing,
    onattribname: nothing,
    oncdata: nothing,
    onclosetag: nothing,
    oncomment: nothing,
    ondeclaration: nothing,
    onend: nothing,
    onopentagend: nothing,
    onopentagname: nothing,
    onprocessinginstruction: nothing,
    onselfclosingtag: nothing,
    ontext: nothing,
    ontextentity: nothing,
    isInForeignContext: () => false,
};

for (let pass = 1; pass <= Number(passes); ++pass) {
    const start = process.hrtime.bigint();
    const tokenizer = new Tokenizer({ xmlMode: false, decodeEntities: false }, callbacks);
    tokenizer.write(text);
    tokenizer.end();
    console.log(`pass ${pass}: ${Number(process.hrtime.bigint() - start) / 1e6}`);
}
