// pictures.mjs SITE OUTPUT [PATH...]: each page at four widths, light and dark.
import { mkdirSync } from "node:fs";
import { join } from "node:path";
import { openBrowser, pagesOf, serve } from "./browser.mjs";

const [site, output, ...chosen] = process.argv.slice(2);
mkdirSync(output, { recursive: true });
const widths = (process.env.WIDTHS ?? "360,768,1280,1920").split(",").map(Number);
const schemes = (process.env.SCHEMES ?? "light,dark").split(",");
const server = await serve(site);
const browser = await openBrowser();
for (const colorScheme of schemes) {
    for (const width of widths) {
        const context = await browser.newContext({ colorScheme, viewport: { width, height: width < 500 ? 740 : 900 } });
        const page = await context.newPage();
        for (const path of chosen.length ? chosen : pagesOf(site)) {
            await page.goto(server.url + path);
            const wide = await page.evaluate(() => document.documentElement.scrollWidth - innerWidth);
            if (wide > 0) console.log(`${path} at ${width}: ${wide} pixels too wide`);
            const name = path.replaceAll("/", "_").replace(".html", "");
            await page.screenshot({ path: join(output, `${name}-${width}-${colorScheme}.png`), fullPage: !process.env.FOLD });
        }
        await context.close();
    }
}
await browser.close();
server.close();
