#include "json/json_depth.h"

namespace Corvel {

std::size_t find_json_level_beyond(std::string_view text, std::size_t levels) {
    std::size_t depth = 0;
    bool in_string = false;
    for (std::size_t i = 0; i < text.size(); ++i) {
        switch (text[i]) {
        case '"':
            in_string = !in_string;
            break;
        case '\\':
            if (in_string)
                ++i;
            break;
        case '[':
        case '{':
            if (!in_string && ++depth > levels)
                return i + 1;
            break;
        case ']':
        case '}':
            if (!in_string && depth > 0)
                --depth;
            break;
        default:
            break;
        }
    }
    return 0;
}

} // namespace Corvel
