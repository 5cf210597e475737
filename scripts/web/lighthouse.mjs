// lighthouse.mjs SITE: its scores for the home page, a project and a topic, as on a telephone.
import { load, openBrowser, pagesOf, serve } from "./browser.mjs";
import { pathToFileURL } from "node:url";

const LEAST = { performance: 0.98, accessibility: 1, "best-practices": 1, seo: 1 };
const site = process.argv[2];
const { default: lighthouse } = await import(pathToFileURL(load.resolve("lighthouse")));
const server = await serve(site);
const all = pagesOf(site);
const pages = ["index.html", all.find((path) => /^[^/]+\/index.html$/.test(path)),
               all.find((path) => path.includes("/topics/"))].filter(Boolean);
const port = 9333;
const browser = await openBrowser([`--remote-debugging-port=${port}`]);
let faults = 0;
for (const path of pages) {
    const { lhr } = await lighthouse(server.url + path, { port, logLevel: "error", output: "json" });
    const scores = Object.entries(lhr.categories).filter(([name]) => name in LEAST);
    console.log(path, scores.map(([name, { score }]) => `${name} ${Math.round(score * 100)}`).join(", "));
    for (const [name, { score, auditRefs }] of scores)
        if (score < LEAST[name]) {
            faults++;
            for (const { id, weight } of auditRefs)
                if (weight && lhr.audits[id].score !== null && lhr.audits[id].score < 1)
                    console.log(`  ${name}: ${lhr.audits[id].title} ${lhr.audits[id].displayValue ?? ""}`);
        }
}
await browser.close();
server.close();
process.exitCode = faults ? 1 : 0;
