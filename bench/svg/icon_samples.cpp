#include "svg/icon_samples.h"

#include <filesystem>
#include <fstream>
#include <iterator>

std::string shipped_icon(const std::string& name) {
    std::ifstream file(std::filesystem::path(SOURCE_ROOT) / "icons" / (name + ".svg"));
    return {std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
}

std::string busy_icon() {
    const std::string outline =
        " d=\"M4.38 12A7.62 7.62 0 0 1 17.67 6.9L19.93 8.86A0.88 0.88 0 0 0 "
        "21.07 7.54L18.89 5.65A9.38 9.38 0 0 0 2.62 12Z";
    std::string text = "<svg xmlns=\"http://www.w3.org/2000/svg\" viewBox=\"0 0 24 24\">\n";
    for (int i = 0; i < 10; ++i) {
        text += "  <path id=\"part-" + std::to_string(i) + "\" fill=\"#808080\"";
        for (int part = 0; part < 4; ++part)
            text += part == 0 ? outline : outline.substr(4);
        text += "\">\n    <animate";
        text += i < 6 ? "Transform type=\"rotate\" values=\"0 12 12; 115.3 11 13; 360 12 12\""
                      : " attributeName=\"opacity\" values=\"0.1;0.931;0.2\"";
        text += " calcMode=\"spline\" keySplines=\"0.4 0 0.2 1; 0.4 0 0.2 1\" dur=\"1.7s\" "
                "repeatCount=\"indefinite\"/>\n  </path>\n";
    }
    return text + "</svg>\n";
}
