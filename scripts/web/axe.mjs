// axe.mjs SITE: axe-core over the pages in light and dark, wide and narrow. Console messages (the
// server sends the policy "default-src 'self'") and requests elsewhere count as faults.
import { readFileSync } from "node:fs";
import { load, openBrowser, pagesOf, serve } from "./browser.mjs";

const site = process.argv[2];
const axe = readFileSync(load.resolve("axe-core/axe.min.js"), "utf8");
const server = await serve(site);
const browser = await openBrowser();
let faults = 0;
const tell = (words) => {
    faults++;
    console.log(words);
};
const pages = pagesOf(site);
for (const colorScheme of ["light", "dark"])
    for (const width of [360, 1280]) {
        const context = await browser.newContext({ colorScheme, viewport: { width, height: 800 } });
        const page = await context.newPage();
        page.on("console", (message) => tell(`${page.url()}: console: ${message.text()}`));
        page.on("pageerror", (error) => tell(`${page.url()}: ${error.message}`));
        page.on("request", (request) => {
            if (!request.url().startsWith(server.url)) tell(`${page.url()}: asks ${request.url()}`);
        });
        for (const path of pages) {
            await page.goto(server.url + path);
            // Through the debugger, past the page's policy.
            const result = await page.evaluate(`${axe}; axe.run()`);
            for (const { id, help, nodes } of result.violations)
                for (const node of nodes)
                    tell(`${path} (${colorScheme}, ${width}): ${id}: ${help}: ${node.html.slice(0, 160)}`);
        }
        await context.close();
    }
await browser.close();
server.close();
console.log(`${pages.length} pages in light and dark, at 360 and 1280: ${faults} faults`);
process.exitCode = faults ? 1 : 0;
