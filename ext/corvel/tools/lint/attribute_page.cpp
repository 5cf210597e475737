#include "attribute_page.h"

#include "layers/attributes.h"
#include "suggestions.h"

#include <ostream>
#include <string>

namespace CorvelLint {
namespace {

using Layers::AttributeInfo;
using Layers::AttributeKind;

std::string kind_text(const AttributeInfo& info) {
    if (info.kind == AttributeKind::Flag)
        return "0 or 1";
    if (info.kind == AttributeKind::Number)
        return "number";
    if (info.name == "Fill" || info.name.ends_with("Color"))
        return "colour";
    std::string words;
    for (const std::string& value : split_words(info.values))
        words += (words.empty() ? "\"" : ", \"") + value + '"';
    return words.empty() ? "text" : words;
}

} // namespace

void print_attributes(std::ostream& out) {
    out << "# Attributes\n\n"
           "Every attribute that the framework reads, in the order in which it reads them. The "
           "page "
           "is written by\n`corvel_lint --attributes`. Sizes are pixels. A number that is missing "
           "reads as 0, but `Opacity` as 1;\na flag that is missing is off, but `Visible` and "
           "`Wrap` are on.\n\n"
           "| Attribute | Value | Means |\n| --- | --- | --- |\n";
    for (const AttributeInfo& info : Layers::attribute_vocabulary())
        out << "| `" << info.name << "` | " << kind_text(info) << " | " << info.meaning << " |\n";
}

} // namespace CorvelLint
