// What the checks share: the packages, a server like any static one, and Debian's Chromium.
import { createRequire } from "node:module";
import { createServer } from "node:http";
import { readFileSync, readdirSync, statSync } from "node:fs";
import { extname, join, normalize } from "node:path";

export const load = createRequire(join(process.env.WEB_CHECK_MODULES, "package.json"));

const TYPES = {
    ".html": "text/html; charset=utf-8",
    ".css": "text/css; charset=utf-8",
    ".js": "text/javascript; charset=utf-8",
    ".svg": "image/svg+xml",
    ".png": "image/png",
    ".xml": "application/xml",
    ".txt": "text/plain; charset=utf-8",
};

/**
 * Serves a folder on the loopback address, at the root or below a path that begins and ends with
 * "/", under the strictest policy that the site promises.
 */
export async function serve(folder, below = "/") {
    const { gzipSync } = await import("node:zlib");
    const server = createServer((request, response) => {
        const asked = normalize(decodeURIComponent(new URL(request.url, "http://x").pathname));
        let path = join(folder, asked.slice(below.length - 1));
        let status = 200;
        try {
            if (!asked.startsWith(below)) throw new Error("not of the site");
            if (statSync(path).isDirectory()) path = join(path, "index.html");
            statSync(path);
        } catch {
            status = 404;
            path = join(folder, "404.html");
        }
        let bytes = readFileSync(path);
        const headers = {
            "Content-Type": TYPES[extname(path)] ?? "application/octet-stream",
            "Content-Security-Policy": "default-src 'self'",
            "Cache-Control": "max-age=3600",
        };
        if (/text|svg|xml/.test(headers["Content-Type"])) {
            bytes = gzipSync(bytes);
            headers["Content-Encoding"] = "gzip";
        }
        response.writeHead(status, headers).end(bytes);
    });
    await new Promise((done) => server.listen(0, "127.0.0.1", done));
    return { url: `http://127.0.0.1:${server.address().port}${below}`, close: () => server.close() };
}

export async function openBrowser(more = []) {
    const { chromium } = load("playwright-core");
    return chromium.launch({
        executablePath: "/usr/bin/chromium",
        args: ["--no-sandbox", "--disable-gpu", "--disable-quic", "--no-first-run",
               "--disable-background-networking", "--disable-component-update", "--disable-sync",
               ...more],
    });
}

/** All pages of a site, as paths from its root. */
export function pagesOf(folder) {
    return readdirSync(folder, { recursive: true })
        .map((path) => path.replaceAll("\\", "/"))
        .filter((path) => path.endsWith(".html"))
        .sort();
}
