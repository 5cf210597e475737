#pragma once

#include <cmath>
#include <numbers>
#include <string>

/// Moving icons of some 6 KB that write about 40 numbers in every frame, of three kinds.
namespace Bench {

namespace Detail {

constexpr const char* HEAD = "<svg xmlns=\"http://www.w3.org/2000/svg\" viewBox=\"0 0 24 24\">\n";
constexpr const char* EASED = " calcMode=\"spline\" keySplines=\"0.4 0 0.2 1; 0.4 0 0.2 1\" "
                              "dur=\"1.7s\" repeatCount=\"indefinite\"/>\n";

inline std::string number(double value) {
    return std::to_string(std::round(value * 100) / 100).substr(0, 5);
}

inline std::string point(double x, double y, double radius, double turns) {
    const double angle = 2 * std::numbers::pi * turns;
    return number(x + radius * std::cos(angle)) + " " + number(y + radius * std::sin(angle));
}

inline std::string wheel_outline(double x, double y, double radius) {
    constexpr int teeth = 10;
    std::string path;
    for (int tooth = 0; tooth < teeth; ++tooth)
        for (const double side : {-0.32, -0.2, 0.2, 0.32})
            path +=
                (path.empty() ? "M" : "L") +
                point(x, y, std::abs(side) < 0.3 ? radius : radius * 0.78, (tooth + side) / teeth);
    return path + "Z";
}

inline std::string round_hole(double x, double y, double radius) {
    const auto half = [&](double side) {
        const double bulge = side * radius * 4 / 3;
        return "C" + number(x - side * radius) + " " + number(y + bulge) + " " +
               number(x + side * radius) + " " + number(y + bulge) + " " +
               number(x + side * radius) + " " + number(y);
    };
    return "M" + number(x - radius) + " " + number(y) + half(1) + half(-1) + "Z";
}

} // namespace Detail

/// Eight dots, five properties of each animated by an element of its own: little is drawn, most of
/// the text is animation, which no frame holds.
inline std::string icon_of_dots() {
    using Detail::number;
    std::string text = Detail::HEAD;
    for (int i = 0; i < 8; ++i) {
        const double angle = i * std::numbers::pi / 4;
        const double x = 12 + 8 * std::sin(angle);
        const double y = 12 - 8 * std::cos(angle);
        const auto animate = [&](const std::string& name, double from, double to) {
            text += "    <animate attributeName=\"" + name + "\" values=\"" + number(from) + "; " +
                    number(to) + "; " + number(from) + "\"" + Detail::EASED;
        };
        text += "  <circle id=\"dot" + std::to_string(i) + "\" fill=\"#808080\" cx=\"" + number(x) +
                "\" cy=\"" + number(y) + "\" r=\"1.6\">\n";
        animate("cx", x, x + std::sin(angle) / 2);
        animate("cy", y, y - std::cos(angle) / 2);
        animate("r", 1.2, 2);
        animate("opacity", 0.3, 1);
        animate("fill-opacity", 0.6, 1);
        text += "  </circle>\n";
    }
    return text + "</svg>\n";
}

/// Six wheels that turn and four lamps that glow, side by side: a drawing as one would make it.
inline std::string icon_of_wheels() {
    using Detail::number;
    struct Wheel {
        double x, y, radius;
    };
    std::string text = Detail::HEAD;
    int index = 0;
    for (const Wheel& wheel : {Wheel{6, 6, 4.6}, Wheel{15, 5.5, 4.2}, Wheel{20, 12.5, 3.6},
                               Wheel{14, 17, 4.4}, Wheel{5, 15.5, 4.4}, Wheel{20.5, 20.5, 2.6}}) {
        const std::string centre = number(wheel.x) + " " + number(wheel.y);
        text +=
            "  <path id=\"wheel" + std::to_string(index) +
            "\" fill=\"#808080\" fill-rule=\"evenodd\" d=\"" +
            Detail::wheel_outline(wheel.x, wheel.y, wheel.radius) +
            Detail::round_hole(wheel.x, wheel.y, wheel.radius / 3) +
            "\">\n    <animateTransform attributeName=\"transform\" type=\"rotate\" values=\"0 " +
            centre + "; 360 " + centre + "\" dur=\"" + std::to_string(4 + index) +
            "s\" repeatCount=\"indefinite\"/>\n  </path>\n";
        ++index;
    }
    for (int lamp = 0; lamp < 4; ++lamp)
        text += "  <circle id=\"lamp" + std::to_string(lamp) + "\" fill=\"#808080\" cx=\"" +
                std::to_string(3 + 3 * lamp) + "\" cy=\"22.5\" r=\"0.8\">\n    <animate " +
                "attributeName=\"opacity\" values=\"0.1; 0.931; 0.2\"" + Detail::EASED +
                "  </circle>\n";
    return text + "</svg>\n";
}

/// Ten shapes over one another, each as large as the icon and of four times the same curved
/// outline: more to draw than any icon has.
inline std::string icon_of_curves() {
    std::string text = Detail::HEAD;
    for (int i = 0; i < 10; ++i) {
        text += "  <path id=\"part" + std::to_string(i) + "\" fill=\"#808080\" d=\"";
        for (int part = 0; part < 4; ++part)
            text += "M4.38 12C4.38 7.79 7.79 4.38 12 4.38L19.93 8.86C20.3 9.17 20.86 9.12 "
                    "21.17 8.75L18.89 5.65C15.8 2.4 10.1 1.4 2.62 12Z";
        text += "\">\n    <animate";
        text += i < 6 ? "Transform type=\"rotate\" values=\"0 12 12; 115.3 11 13; 360 12 12\""
                      : " attributeName=\"opacity\" values=\"0.1; 0.931; 0.2\"";
        text += Detail::EASED;
        text += "  </path>\n";
    }
    return text + "</svg>\n";
}

} // namespace Bench
