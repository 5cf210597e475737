#include "builder/pages/templates.h"

#include <algorithm>

namespace Lumenfold::Builder {

std::string way_to_root(std::string_view path) {
    std::string way;
    for (const char c : path)
        if (c == '/')
            way += "../";
    return way;
}

std::string place_page(std::string_view html, std::string_view root) {
    std::string page;
    page.reserve(html.size() +
                 static_cast<std::size_t>(std::count(html.begin(), html.end(), ROOT_MARK)) *
                     root.size());
    std::size_t begin = 0;
    for (std::size_t at = 0; (at = html.find(ROOT_MARK, begin)) != std::string_view::npos;) {
        page.append(html, begin, at - begin).append(root);
        begin = at + 1;
    }
    return page.append(html, begin);
}

} // namespace Lumenfold::Builder
