// search.mjs SITE [QUESTIONS]: types questions into the site's own search, and tells what they cost.
// RANKS=1 prints the place of each expected page.
import { readFileSync } from "node:fs";
import { join } from "node:path";
import { gzipSync } from "node:zlib";
import { fileURLToPath } from "node:url";
import { openBrowser, serve } from "./browser.mjs";

const [site, file = fileURLToPath(new URL("questions.txt", import.meta.url))] = process.argv.slice(2);
const questions = readFileSync(file, "utf8").split("\n")
    .filter((line) => line.includes(" => ")).map((line) => line.split(" => "));
const server = await serve(site);
const browser = await openBrowser();
let missed = 0;
let worstBytes = 0;
const times = [];
for (const [question, expected] of questions) {
    const context = await browser.newContext();
    const page = await context.newPage();
    await page.goto(server.url + "search.html");
    let bytes = 0;
    page.on("request", (request) => {
        const path = request.url().replace(server.url, "");
        if (path.startsWith("search/")) bytes += gzipSync(readFileSync(join(site, path))).length;
    });
    await page.focus("#PageSearch");
    await page.evaluate(() => {
        const field = document.getElementById("PageSearch");
        window.asked = {};
        field.addEventListener("input", () => (asked = { last: performance.now() }), true);
        new MutationObserver(() => (asked.shown ??= performance.now()))
            .observe(document.querySelector("output"), { childList: true });
    });
    await page.keyboard.type(question, { delay: 80 });
    await page.waitForTimeout(600); // the rest follows when no more is typed
    const time = await page.evaluate(() => asked.shown - asked.last);
    const links = await page.evaluate(() =>
        [...document.querySelectorAll(".results li > a")].map((link) => link.href));
    const paths = links.map((link) => link.replace(server.url, "").replace(/#.*/, ""));
    times.push(time);
    worstBytes = Math.max(worstBytes, bytes);
    if (process.env.RANKS) console.log(`${question} => ${expected}: ${paths.indexOf(expected) + 1 || "none"}`);
    if (!paths.slice(0, 3).includes(expected)) {
        missed++;
        console.log(`${question}: ${expected} is not among ${paths.slice(0, 3).join(", ") || "nothing"}`);
    }
    await context.close();
}
await browser.close();
server.close();
times.sort((a, b) => a - b);
console.log(`${questions.length} questions, ${missed} missed; first results after the last key in ` +
    `${times[times.length >> 1].toFixed()} ms (middle), ${times[times.length - 1].toFixed()} ms (worst); ` +
    `at most ${worstBytes} bytes loaded, packed`);
process.exitCode = missed ? 1 : 0;
