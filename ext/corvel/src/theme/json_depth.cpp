#include "theme/json_depth.h"

namespace Corvel {

bool json_nests_deeper_than(std::string_view text, std::size_t levels) {
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
                return true;
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
    return false;
}

} // namespace Corvel
