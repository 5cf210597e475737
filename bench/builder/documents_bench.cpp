// Documents of 4 KB, as most pages of a site are: plain Markdown, the same with a little HTML, and
// code in two languages. A document without HTML must stay well below 100 microseconds.

#include "builder/documents/document.h"

#include <benchmark/benchmark.h>

#include <string>

namespace {

using namespace Lumenfold::Builder;

constexpr std::size_t SIZE = 4096;

/// Leads nowhere else than the text says.
class SameLinks final : public LinkResolver {
public:
    LinkTarget link(std::string_view address, std::size_t) override {
        return {std::string(address), false, {}};
    }
    ImageTarget image(std::string_view address, std::size_t) override {
        ImageTarget target;
        target.src = address;
        target.width = 640;
        target.height = 480;
        return target;
    }
};

const std::string CHAPTER = R"(## Reading a station

A station sends *one* line a minute. The reader `gauge read` keeps the last day and
writes it as **two** columns, see [Units](units.md#metres) and the table below.

- The first column is the time in UTC.
- The second column is the height above datum.

| Option | Meaning |
|--------|---------|
| `-s`   | station |
| `-u`   | unit    |

> [!NOTE]
> Sensors drown. Plan for it.

![A curve](curve.png)

```sh
gauge read --station 8454000 --unit m | head -3  # three lines
```

)";

std::string document(const std::string& extra) {
    std::string text = "# Stations\n\n" + extra;
    while (text.size() < SIZE)
        text += CHAPTER;
    return text;
}

void render(benchmark::State& state, const std::string& text) {
    SameLinks links;
    for (auto _ : state) {
        Messages messages;
        benchmark::DoNotOptimize(render_markdown(text, {"a.md", true}, links, messages));
    }
    state.SetBytesProcessed(static_cast<std::int64_t>(state.iterations() * text.size()));
}

void highlight(benchmark::State& state, const char* language, const std::string& piece) {
    std::string code;
    while (code.size() < SIZE)
        code += piece;
    for (auto _ : state)
        benchmark::DoNotOptimize(highlight_code(code, language));
    state.SetBytesProcessed(static_cast<std::int64_t>(state.iterations() * code.size()));
}

BENCHMARK_CAPTURE(render, markdown, document(""));
BENCHMARK_CAPTURE(render, with_html,
                  document("<p align=\"center\"><img src=\"logo.png\" width=\"100\"></p>\n\n"));
BENCHMARK_CAPTURE(highlight, shell, "sh",
                  "for x in *.csv; do gauge read --file \"$x\"; done # all\n");
BENCHMARK_CAPTURE(
    highlight, cpp, "cpp",
    "std::string name(const Reader& reader) { return reader.name() + \"x\"; } // n\n");

} // namespace

BENCHMARK_MAIN();
