#include "builder/serve/served_page.h"

#include "builder/documents/escape.h"

namespace Lumenfold::Builder {

std::string_view reload_script() {
    return R"(let known = null;
async function ask() {
  if (document.visibilityState === 'visible') {
    try {
      const answer = await (await fetch('/.lumenfold/generation', {cache: 'no-store'})).text();
      if (known !== null && answer !== known) location.reload();
      known = answer;
    } catch {
      // The server was stopped: go on asking, it may come back.
    }
  }
  setTimeout(ask, 500);
}
ask();
)";
}

std::string_view problem_style() {
    return R"(.build-problem {
    margin: 0;
    padding: 1rem 1.5rem;
    background: #8c1d18;
    color: #fff;
    font: 0.875rem/1.5 ui-monospace, "DejaVu Sans Mono", monospace;
    white-space: pre-wrap;
    overflow-wrap: anywhere;
}
)";
}

std::string served_page(std::string html, std::string_view problem) {
    const std::string script = "<link rel=\"stylesheet\" href=\"" + std::string(STYLE_PATH) +
                               "\"><script src=\"" + RELOAD_SCRIPT_PATH + "\" defer></script>";
    std::size_t head = html.find("</head>");
    if (head == std::string::npos)
        head = 0;
    html.insert(head, script);
    if (problem.empty())
        return html;
    const std::size_t body = html.find("<body");
    const std::size_t after = body == std::string::npos ? std::string::npos : html.find('>', body);
    std::string note = "<pre class=\"build-problem\" role=\"alert\">";
    append_text(note, problem);
    note += "</pre>";
    html.insert(after == std::string::npos ? html.size() : after + 1, note);
    return html;
}

} // namespace Lumenfold::Builder
