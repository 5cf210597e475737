// ask.mjs FOLDER: runs the site's own script outside a browser. Reads queries from standard input,
// prints for each the paths of the pages it finds, the best first.
import { readFileSync } from "node:fs";
import { join } from "node:path";
import vm from "node:vm";

const folder = process.argv[2];
const nothing = { dataset: {}, querySelectorAll: () => [], addEventListener() {} };
const context = vm.createContext({
    URL,
    window: {},
    document: {
        ...nothing,
        documentElement: nothing,
        currentScript: { dataset: {}, src: "http://site/assets/site.js" },
        getElementById: () => null,
        createElement: () => ({ append() {} }),
        head: {
            append({ src }) {
                const path = join(folder, src.replace("http://site/", ""));
                vm.runInContext(readFileSync(path, "utf8").replace(/^/, "window."), context);
            },
        },
    },
});
// The script keeps its names to itself, in a block: the hook stands at the block's end.
const script = readFileSync(join(folder, "assets/site.js"), "utf8");
vm.runInContext(script.replace(/\}\s*$/, "window.names = { load, termsOf, find, rank };\n}"), context);
const { load, termsOf, find, rank } = context.window.names;

for (const query of readFileSync(0, "utf8").split("\n").filter(Boolean)) {
    const index = await load("index");
    const found = await Promise.all(termsOf(query).map((word) => find(word, index)));
    const paths = [];
    for (const { entry, versions } of rank(found).slice(0, 3)) {
        const record = (await load("d" + Math.floor(entry / 8)))[entry % 8];
        const labels = record[3].filter((version, i) => (versions >> i) & 1).map(([label]) => label);
        paths.push(record[0] + (labels.length > 1 || labels[0] ? " " + labels.join("+") : ""));
    }
    console.log(query + " => " + paths.join(", "));
}
