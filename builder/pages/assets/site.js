// What pages do beyond reading. Everything works without it, if less handily. Served in one file
// with search.js, without comments and indents.
const page = document.documentElement;
const script = document.currentScript;
const words = script.dataset;
const all = (selector) => [...document.querySelectorAll(selector)];
const on = (target, event, action) => target.addEventListener(event, action);

function create(tag, name, ...children) {
    const node = document.createElement(tag);
    if (name) node.className = name;
    node.append(...children);
    return node;
}

// What opens by hand closes when something else is clicked or gets the focus.
function closeOutside(element, close) {
    for (const event of ["click", "focusin"])
        on(document, event, ({ target }) => element.contains(target) || close());
}

// The colours: what the reader chooses here holds on all pages (see theme.js).
for (const button of all(".theme-switch"))
    on(button, "click", () => {
        const chosen = page.dataset.theme;
        const dark = chosen ? chosen === "dark" : matchMedia("(prefers-color-scheme: dark)").matches;
        page.dataset.theme = dark ? "light" : "dark";
        try {
            localStorage.setItem("theme", page.dataset.theme);
        } catch {
            // Then it holds for this page.
        }
    });

for (const menu of all(".menu")) {
    const close = () => (menu.open = false);
    closeOutside(menu, close);
    on(menu, "keydown", ({ key }) => {
        if (key !== "Escape") return;
        close();
        menu.firstChild.focus();
    });
}

// A drawer is done with when its reader has chosen.
for (const drawer of all("[popover]"))
    on(drawer, "click", ({ target }) => {
        if (target.closest("a") && drawer.matches(":popover-open")) drawer.hidePopover();
    });

// The table of contents follows the reader.
const entries = all(".contents a").map((link) => [
    link, document.getElementById(decodeURIComponent(link.hash.slice(1)))]);
function follow() {
    const here = entries.filter(([, heading]) => heading?.getBoundingClientRect().top < 120).pop();
    for (const [link] of entries) link.classList.toggle("here", link === here?.[0]);
}
if (entries.length) {
    on(document, "scroll", () => requestAnimationFrame(follow));
    follow();
}

// Code can be copied, and scrolled by keyboard.
for (const block of all("main pre")) {
    if (block.scrollWidth > block.clientWidth) block.tabIndex = 0;
    if (!navigator.clipboard) continue;
    const button = create("button", "copy", words.copy);
    on(button, "click", async () => {
        await navigator.clipboard.writeText(block.textContent.trimEnd());
        button.textContent = words.copied;
        setTimeout(() => (button.textContent = words.copy), 2000);
    });
    const frame = create("div", "code");
    block.replaceWith(frame);
    frame.append(block, button);
}
