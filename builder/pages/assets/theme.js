// Runs before the page is drawn: the colours that the reader has chosen.
document.documentElement.dataset.switch = "";
try {
    const chosen = localStorage.getItem("theme");
    if (/^(dark|light)$/.test(chosen)) document.documentElement.dataset.theme = chosen;
} catch {
    // Storage may be switched off; the system's choice holds then.
}
