// Times a formatter written in JavaScript, pass by pass: node javascript.cjs {prettier|js-beautify} PAGE PASSES
'use strict';

const { readFileSync } = require('node:fs');

const formatters = {
    prettier: () => {
        const prettier = require('prettier');
        return (text) => prettier.format(text, { parser: 'html', useTabs: true });
    },
    'js-beautify': () => {
        const { html } = require('js-beautify');
        return (text) => html(text, { indent_with_tabs: true });
    },
};

async function main([name, page, passes]) {
    const text = readFileSync(page, 'utf8');
    const format = formatters[name]();
    for (let pass = 1; pass <= Number(passes); ++pass) {
        const start = process.hrtime.bigint();
        await format(text);
        console.log(`pass ${pass}: ${Number(process.hrtime.bigint() - start) / 1e6}`);
    }
}

main(process.argv.slice(2));
