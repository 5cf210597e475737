// links.mjs SITE: opens every page from a folder and from below a path of a server, as a browser
// does. A link or anchor that leads nowhere, a request to anybody else, a console message and a page
// that is wider than its window are faults; so is a page that costs more than PAGE_BYTES.
import { existsSync, readFileSync, statSync } from "node:fs";
import { join } from "node:path";
import { pathToFileURL } from "node:url";
import { gzipSync } from "node:zlib";
import { openBrowser, pagesOf, serve } from "./browser.mjs";

const PAGE_BYTES = 30 * 1024;
const site = process.argv[2];
// The page for missing addresses belongs at the server's root, from which its links start.
const pages = pagesOf(site).filter((path) => path !== "404.html");
const server = await serve(site, "/below/a/path/");
const browser = await openBrowser();
let faults = 0;
let links = 0;
const tell = (words) => {
    faults++;
    console.log(words);
};
const anchors = new Map();

/** Whether the address, of a page at the root, leads to a file and to an anchor there. */
function leadsNowhere(address, root) {
    const url = new URL(address);
    let path = join(site, decodeURIComponent(url.pathname.slice(root.pathname.length)));
    if (existsSync(path) && statSync(path).isDirectory())
        path = root.protocol === "file:" ? path + "/." : join(path, "index.html");
    if (!existsSync(path) || path.endsWith("/.")) return true;
    const anchor = decodeURIComponent(url.hash.slice(1));
    return anchor && !anchors.get(path)?.has(anchor);
}

async function visit(root) {
    const context = await browser.newContext({ viewport: { width: 1280, height: 800 } });
    const page = await context.newPage();
    const places = [];
    page.on("console", (message) => tell(`${page.url()}: console: ${message.text()}`));
    page.on("pageerror", (error) => tell(`${page.url()}: ${error.message}`));
    page.on("request", (request) => {
        if (!request.url().startsWith(root.href)) tell(`${page.url()}: asks ${request.url()}`);
    });
    for (const path of pages) {
        await page.goto(root.href + path);
        const found = await page.evaluate(() => ({
            ids: [...document.querySelectorAll("[id]")].map(({ id }) => id),
            hrefs: [...document.querySelectorAll("a[href]")].map(({ href }) => href),
            wide: document.documentElement.scrollWidth - innerWidth,
        }));
        anchors.set(join(site, path), new Set(found.ids));
        places.push([path, found.hrefs]);
        if (found.wide > 0) tell(`${path}: ${found.wide} pixels too wide`);
    }
    for (const [path, hrefs] of places)
        for (const href of new Set(hrefs))
            if (href.startsWith(root.href) && ++links && leadsNowhere(href, root))
                tell(`${root.href}${path}: ${href} leads nowhere`);
            else if (!/^(https?|mailto|file):/.test(href)) tell(`${path}: ${href} is no address`);
            else if (href.startsWith("file:") && !href.startsWith(root.href))
                tell(`${path}: ${href} leads out of the site`);
    await context.close();
}

function measureSizes() {
    const packed = (file) => gzipSync(readFileSync(join(site, file))).length;
    const shared = ["site.css", "site.js", "theme.js"].map((name) => "assets/" + name)
        .filter((file) => existsSync(join(site, file)));
    const sum = (files) => files.map(packed).reduce((a, b) => a + b, 0);
    const sizes = pages.map((path) => [packed(path), path]).sort(([a], [b]) => a - b);
    const all = sum(shared);
    for (const [size, path] of sizes)
        if (size + all > PAGE_BYTES) tell(`${path}: ${size + all} bytes with style and script, packed`);
    const [middle, [largest, path]] = [sizes[sizes.length >> 1], sizes[sizes.length - 1]];
    console.log(`packed: style ${packed("assets/site.css")}, script ` +
        `${sum(shared.filter((file) => file.endsWith(".js")))}; with both a page has ` +
        `${middle[0] + all} bytes (middle), ${largest + all} (most, ${path})`);
}

await visit(new URL(pathToFileURL(site) + "/"));
await visit(new URL(server.url));
await browser.close();
server.close();
measureSizes();
console.log(`${pages.length} pages, ${links} links, from a folder and below a path: ${faults} faults`);
process.exitCode = faults ? 1 : 0;
