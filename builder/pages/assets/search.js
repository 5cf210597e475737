// Search. The index lies in small scripts below "search/", each of which hands one value to
// lumenfoldSearch: a page opened from a folder can load nothing else. search_shards.h tells how
// they are written. A file that does not come ends the search in silence.
const root = new URL("..", script.src);
const files = {};

function load(name) {
    const file = (files[name] ??= {});
    return (file.value ??= new Promise((done) => {
        file.done = done;
        const node = create("script");
        node.src = root + "search/" + name + ".js";
        document.head.append(node);
    }));
}
window.lumenfoldSearch = (name, value) =>
    files[name].done(/^[tr]/.test(name) ? readTerms(value) : value);

// Lines of terms, each beginning with how much it shares with the one before.
function readTerms(lines) {
    let term = "";
    return lines.trim().split("\n").map((line) => {
        const [rest, uses] = line.slice(1).split(" ");
        term = term.slice(0, line[0]) + rest;
        return { term, uses };
    });
}

// The uses of a term: [entry, impact, section, versions], and in how many pages it is.
function readUses(text) {
    let at = 0;
    const next = () => {
        for (let value = 0, place = 1; ; place *= 32) {
            const digit = text.charCodeAt(at++) - 48;
            value += (digit & 31) * place;
            if (digit < 32) return value;
        }
    };
    const cut = text[0] === "!" && ++at && next();
    const list = [];
    for (let entry = 0; at < text.length; ) {
        entry += next();
        const impact = next();
        const section = next();
        list.push([entry, impact, section >> 1, section & 1 ? next() : 0]);
    }
    return { list, cut, pages: cut || list.length };
}

// The words of a text as the index knows them (search_terms.h does the same).
const WORDS = /[\u3040-\u9fff]|((?![\u3040-\u9fff])[\p{L}\p{N}])+/gu;
const termsOf = (text) =>
    (text.normalize("NFD").replace(/\p{M}+/gu, "").toLowerCase().replace(/ς/g, "σ").match(WORDS) || [])
        .map((word) => [...word].slice(0, 32).join(""));

// All terms that begin so, from three files at most.
async function termsFrom(kind, head) {
    const starts = (await load("index"))[kind].split(" ");
    let at = Math.max(starts.findLastIndex((start) => start <= head), 0);
    const names = [];
    do names.push(kind + at);
    while (names.length < 3 && starts[++at] < head + "\uffff");
    const lists = await Promise.all(names.map(load));
    return lists.flat().filter(({ term }) => term.startsWith(head));
}

// Whether one letter added, left out, changed, or two swapped make one of the other.
function oneErrorApart(one, other) {
    let same = 0;
    while (same < one.length && one[same] === other[same]) same++;
    const a = one.slice(same);
    const b = other.slice(same);
    return a.slice(1) === b || a === b.slice(1) || a.slice(1) === b.slice(1) ||
        (a[0] === b[1] && a[1] === b[0] && a.slice(2) === b.slice(2));
}

// An error leaves one half of a word whole: terms are looked up by either.
async function guesses(word) {
    const half = word.length >> 1;
    const near = ({ term }) =>
        oneErrorApart(word, term) || oneErrorApart(word, term.slice(0, word.length));
    const found = (await termsFrom("t", word.slice(0, half))).filter(near);
    if (found.length) return found;
    const turn = (text) => [...text].reverse().join("");
    const exact = (await termsFrom("r", turn(word.slice(half + 1)))).map(({ term }) => turn(term))
        .filter((term) => oneErrorApart(word, term)).slice(0, 2);
    const lists = await Promise.all(exact.map((term) => termsFrom("t", term)));
    return lists.flat().filter(({ term }) => exact.includes(term));
}

async function candidates(word) {
    const found = await termsFrom("t", word.length < 4 ? word : word.replace(/s$/, ""));
    if (word.length < 3)
        return [...await termsFrom("t", "*" + word), ...found]
            .filter(({ term }) => term === word || term === "*" + word);
    return found.length || word.length < 4 ? found : guesses(word);
}

// What a word finds: for each page its best use, and the terms that were meant.
async function find(word, { pages }) {
    const best = new Map();
    let cut = 0;
    const terms = await candidates(word);
    for (const { term, uses } of terms) {
        const use = readUses(uses);
        cut ||= use.cut;
        const weight = Math.log(1 + pages / use.pages) *
            (term === word ? 1 : term.startsWith(word) ? 0.3 + (0.5 * word.length) / term.length : 0.35);
        for (const [entry, impact, section, versions] of use.list) {
            const score = weight * impact;
            if (!(best.get(entry)?.score >= score)) best.set(entry, { score, section, versions });
        }
    }
    return { best, cut, terms: terms.map(({ term }) => term.replace("*", "")) };
}

// The pages that have all words, the best first; those with most of them if none has all. A word
// in so many pages that the index leaves some out is no condition.
function rank(found) {
    const ranked = new Map();
    for (const { best, cut } of found)
        for (const [entry, { score, section, versions }] of best) {
            const one = ranked.get(entry) || { entry, score: 0, words: 0, top: 0, versions: -1 };
            ranked.set(entry, one);
            one.score += score;
            one.words += !cut;
            one.versions &= versions || -1;
            if (score > one.top) one.section = section;
            one.top = Math.max(score, one.top);
        }
    return [...ranked.values()].sort((a, b) => b.words - a.words || b.score - a.score)
        .filter(({ words }, i, list) => words === list[0].words);
}

// A text with the words that were looked for marked.
function marked(text, terms) {
    const parts = [];
    let done = 0;
    for (const { 0: word, index } of text.matchAll(/[\p{L}\p{N}\p{M}]+/gu)) {
        if (!termsOf(word).some((one) => terms.some((term) => one.startsWith(term)))) continue;
        parts.push(text.slice(done, index), create("mark", "", word));
        done = index + word.length;
    }
    return [...parts, text.slice(done)];
}

// Some words around the first match of a text; nothing if there is none.
function excerpt(text, terms) {
    const first = marked(text, terms)[0].length;
    if (first === text.length) return "";
    const begin = first < 60 ? 0 : text.indexOf(" ", first - 50) + 1;
    const end = text.indexOf(" ", begin + 160);
    return (begin ? "… " : "") + (end < 0 ? text.slice(begin) : text.slice(begin, end) + " …");
}

async function show(result, terms) {
    // Eight to a file.
    const file = await load("d" + (result.entry >> 3));
    const [, title, project, versions, sections, older] = file[result.entry & 7];
    const has = versions.filter((version, i) => (result.versions >> i) & 1);
    const shown = has.shift() || versions[0];
    const newest = shown === versions[0];
    const [anchor, heading, text] = (newest && sections[result.section]) || sections[0] || ["", "", ""];
    const link = (label, path) => Object.assign(create("a", "", ...label), { href: root + path });
    const main = link([create("b", "", ...marked(title, terms))], shown[1] + (newest && anchor ? "#" + anchor : ""));
    const add = (name, content) =>
        content && main.append(create("span", name, ...marked(content, terms)));
    add("heading", heading !== title && heading);
    add("project", project && project + (older || !newest ? " " + shown[0] : ""));
    add("excerpt", [text, ...sections.map(([, , one]) => one)]
        .map((one) => excerpt(one, terms)).find(Boolean) || text.slice(0, 140));
    const also = has.slice(0, 4).flatMap(([label, path]) => [" ", link([label], path)]);
    return create("li", "", main, ...(also.length ? [create("p", "also", words.also, ...also)] : []));
}

// The field with its results below; the header's close when the reader leaves them.
const own = document.getElementById("PageSearch");
const field = own || document.getElementById("Search");
if (field) {
    const form = field.form;
    const status = create("output");
    const list = create("ul");
    const panel = create("div", "results", status, list);
    panel.hidden = true;
    form.append(panel);
    let last = 0;

    const update = async () => {
        const turn = ++last;
        const text = field.value.trim();
        const index = await load("index");
        const found = await Promise.all([...new Set(termsOf(text))].map((word) => find(word, index)));
        const terms = found.flatMap((one) => one.terms);
        const results = rank(found);
        // The first ones at once; the others, with their files, when no more is typed.
        for (const count of [2, own ? 12 : 7]) {
            const more = count > 2;
            const items = await Promise.all(
                results.slice(more && 2, count).map((one) => show(one, terms)));
            if (turn !== last) return;
            list[more ? "append" : "replaceChildren"](...items);
            status.textContent = ([words.none, words.one][results.length] || words.many)
                .replace("%1", results.length || text);
            panel.hidden = !text;
            await new Promise((done) => setTimeout(done, 200));
            if (turn !== last) return;
        }
    };
    on(field, "focus", () => {
        load("index");
        panel.hidden = !field.value;
    });
    on(field, "input", update);
    on(form, "keydown", (event) => {
        const stops = [field, ...list.querySelectorAll("li > a")];
        const step = { ArrowDown: 1, ArrowUp: -1 }[event.key];
        if (step && !panel.hidden) {
            event.preventDefault();
            (stops[stops.indexOf(document.activeElement) + step] || field).focus();
        } else if (event.key === "Escape" && !own) {
            field.focus();
            panel.hidden = true;
        }
    });
    if (own) {
        own.value = new URLSearchParams(location.search).get("q") || "";
        if (own.value) update();
    } else closeOutside(form, () => (panel.hidden = true));
    on(document, "keydown", (event) => {
        if (event.key !== "/" || event.ctrlKey || event.target.closest("input")) return;
        event.preventDefault();
        field.focus();
    });
}
