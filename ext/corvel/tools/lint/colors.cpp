#include "colors.h"

#include "suggestions.h"

#include <algorithm>
#include <cctype>

namespace CorvelLint {

const std::string_view COLOR_HELP =
    "write six digits, \"#36393f\", eight with the opacity first, \"#8036393f\", or a name";

const std::vector<std::string>& color_names() {
    static const std::vector<std::string> names = split_words(
        "aliceblue, antiquewhite, aqua, aquamarine, azure, beige, bisque, black, blanchedalmond, "
        "blue, blueviolet, brown, burlywood, cadetblue, chartreuse, chocolate, coral, "
        "cornflowerblue, cornsilk, crimson, cyan, darkblue, darkcyan, darkgoldenrod, darkgray, "
        "darkgreen, darkgrey, darkkhaki, darkmagenta, darkolivegreen, darkorange, darkorchid, "
        "darkred, darksalmon, darkseagreen, darkslateblue, darkslategray, darkslategrey, "
        "darkturquoise, darkviolet, deeppink, deepskyblue, dimgray, dimgrey, dodgerblue, "
        "firebrick, floralwhite, forestgreen, fuchsia, gainsboro, ghostwhite, gold, goldenrod, "
        "gray, green, greenyellow, grey, honeydew, hotpink, indianred, indigo, ivory, khaki, "
        "lavender, lavenderblush, lawngreen, lemonchiffon, lightblue, lightcoral, lightcyan, "
        "lightgoldenrodyellow, lightgray, lightgreen, lightgrey, lightpink, lightsalmon, "
        "lightseagreen, lightskyblue, lightslategray, lightslategrey, lightsteelblue, "
        "lightyellow, lime, limegreen, linen, magenta, maroon, mediumaquamarine, mediumblue, "
        "mediumorchid, mediumpurple, mediumseagreen, mediumslateblue, mediumspringgreen, "
        "mediumturquoise, mediumvioletred, midnightblue, mintcream, mistyrose, moccasin, "
        "navajowhite, navy, oldlace, olive, olivedrab, orange, orangered, orchid, palegoldenrod, "
        "palegreen, paleturquoise, palevioletred, papayawhip, peachpuff, peru, pink, plum, "
        "powderblue, purple, red, rosybrown, royalblue, saddlebrown, salmon, sandybrown, "
        "seagreen, seashell, sienna, silver, skyblue, slateblue, slategray, slategrey, snow, "
        "springgreen, steelblue, tan, teal, thistle, tomato, transparent, turquoise, violet, "
        "wheat, white, whitesmoke, yellow, yellowgreen");
    return names;
}

bool is_color(std::string_view text) {
    if (text.starts_with('#')) {
        text.remove_prefix(1);
        const bool has_digits_only =
            text.find_first_not_of("0123456789abcdefABCDEF") == std::string_view::npos;
        return has_digits_only && (text.size() == 3 || text.size() == 6 || text.size() == 8);
    }
    std::string name;
    for (const char c : text)
        if (c != ' ')
            name += static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
    return std::binary_search(color_names().begin(), color_names().end(), name);
}

} // namespace CorvelLint
