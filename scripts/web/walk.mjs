// walk.mjs SITE: through the site by keyboard alone: to a search result, another version, a copied
// command. Prints each step; a step that does not arrive is a fault.
import { openBrowser, serve } from "./browser.mjs";

const server = await serve(process.argv[2]);
const browser = await openBrowser();
const context = await browser.newContext({ viewport: { width: 1280, height: 900 } });
await context.grantPermissions(["clipboard-read", "clipboard-write"], { origin: server.url });
const page = await context.newPage();
const press = (key) => page.keyboard.press(key);
const focused = () => page.evaluate(() => document.activeElement.outerHTML.slice(0, 120));
let pressed = 0;

async function tabTo(selector) {
    for (pressed = 1; pressed < 80; pressed++) {
        await press("Tab");
        if (await page.evaluate((wanted) => document.activeElement.matches(wanted), selector)) return;
    }
    throw new Error(`no way by Tab to ${selector}`);
}

async function step(words, action) {
    await action();
    console.log(`${words}: ${page.url().replace(server.url, "/")}, on ${await focused()}`);
}

try {
    await page.goto(server.url);
    await step("Tab meets the skip link first", () => tabTo(".skip:first-of-type"));
    if (pressed !== 1) throw new Error(`after ${pressed} stops`);
    await step("/ goes to the search field", async () => {
        await press("/");
        await page.keyboard.type("storm surge");
        await page.waitForSelector(".results li > a");
    });
    await step("an arrow and Return open the first result", async () => {
        await press("ArrowDown");
        await press("Enter");
        await page.waitForURL("**/topics/*");
    });
    await step("Tab reaches the versions, Return opens them", async () => {
        await tabTo(".versions > summary");
        await press("Enter");
    });
    const before = page.url();
    await step("the next version", async () => {
        await tabTo(".versions li:nth-child(2) a");
        await press("Enter");
        await page.waitForURL((url) => url.href !== before);
    });
    await page.goto(server.url + "harmonics/index.html");
    await step("Tab reaches a copy button, Return copies", async () => {
        await tabTo(".copy");
        await press("Enter");
        await page.waitForFunction(() => document.activeElement.textContent === "Copied");
    });
    console.log("copied: " + (await page.evaluate(() => navigator.clipboard.readText())));
} catch (error) {
    console.log("FAULT: " + error.message.split("\n")[0]);
    process.exitCode = 1;
}
await browser.close();
server.close();
