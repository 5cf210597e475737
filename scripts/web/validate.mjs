// validate.mjs SITE: html-validate over all pages.
import { readFileSync } from "node:fs";
import { join } from "node:path";
import { load, pagesOf } from "./browser.mjs";

const { HtmlValidate, StaticConfigLoader } = load("html-validate");
const validator = new HtmlValidate(new StaticConfigLoader({
    extends: ["html-validate:standard"],
    rules: {
        // Matters of taste that change nothing for a browser.
        "long-title": "off",
        "no-inline-style": "off",
    },
}));
const site = process.argv[2];
let faults = 0;
const pages = pagesOf(site);
for (const path of pages) {
    const report = await validator.validateString(readFileSync(join(site, path), "utf8"));
    for (const { messages } of report.results)
        for (const { line, message, ruleId } of messages) {
            console.log(`${path}:${line}: ${message} (${ruleId})`);
            faults++;
        }
}
console.log(`${pages.length} pages, ${faults} faults`);
process.exitCode = faults ? 1 : 0;
