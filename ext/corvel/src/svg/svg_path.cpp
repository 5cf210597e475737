#include "svg/svg_path.h"

#include "svg/svg_values.h"

#include <array>
#include <span>

namespace Corvel::Svg {
namespace {

constexpr std::string_view COMMAND_LETTERS = "MmLlHhVvCcQqZz";
constexpr int CURVE_STEPS = 16;

bool is_command(char c) {
    return COMMAND_LETTERS.find(c) != std::string_view::npos;
}

/// The end of an exponent such as "e-5" at `position`, or `position` if there is none.
std::size_t skip_exponent(std::string_view text, std::size_t position) {
    if (position == text.size() || (text[position] != 'e' && text[position] != 'E'))
        return position;
    const std::size_t sign = position + 1;
    const bool has_sign = sign < text.size() && (text[sign] == '-' || text[sign] == '+');
    std::size_t end = sign + (has_sign ? 1 : 0);
    const std::size_t digits = end;
    while (end < text.size() && text[end] >= '0' && text[end] <= '9')
        ++end;
    return end > digits ? end : position;
}

Point operator*(double factor, Point point) {
    return {factor * point.x, factor * point.y};
}
Point operator+(Point p, Point q) {
    return {p.x + q.x, p.y + q.y};
}

class PathReader {
public:
    explicit PathReader(std::string_view text)
        : text_(text) {
        advance();
    }

    std::vector<Point> read() {
        while (!token_.empty()) {
            if (is_command(token_.front())) {
                command_ = token_.front();
                advance();
            } else if (command_ == 0 || lower() == 'z') {
                advance(); // a number that belongs to no command
                continue;
            }
            run();
        }
        return std::move(points_);
    }

private:
    void advance() { token_ = next_path_token(text_, position_); }
    char lower() const { return static_cast<char>(command_ | 0x20); }
    bool relative() const { return command_ >= 'a'; }

    bool read_number(double& number) {
        if (token_.empty() || is_command(token_.front()))
            return false;
        number = parse_number(token_);
        advance();
        return true;
    }

    /// Reads points, relative ones as from the current point; false if one is incomplete.
    bool read_points(std::span<Point> points) {
        for (Point& point : points) {
            if (!read_number(point.x) || !read_number(point.y))
                return false;
            if (relative()) {
                point.x += current_.x;
                point.y += current_.y;
            }
        }
        return true;
    }

    void move_to(Point point) {
        current_ = point;
        points_.push_back(point);
    }

    void run() {
        switch (lower()) {
        case 'z':
            return move_to(start_);
        case 'm':
        case 'l':
            return run_line();
        case 'h':
            return run_axis(current_.x);
        case 'v':
            return run_axis(current_.y);
        case 'c':
            return run_cubic();
        default:
            return run_quadratic();
        }
    }

    void run_line() {
        std::array<Point, 1> to;
        if (!read_points(to))
            return;
        move_to(to[0]);
        if (lower() == 'm') {
            start_ = current_;
            command_ = relative() ? 'l' : 'L';
        }
    }

    void run_axis(double& coordinate) {
        double value = 0;
        if (!read_number(value))
            return;
        coordinate = relative() ? coordinate + value : value;
        points_.push_back(current_);
    }

    void run_cubic() {
        std::array<Point, 3> to;
        if (!read_points(to))
            return;
        const Point from = current_;
        for (int i = 1; i <= CURVE_STEPS; ++i) {
            const double t = static_cast<double>(i) / CURVE_STEPS;
            const double s = 1 - t;
            move_to(s * s * s * from + 3 * s * s * t * to[0] + 3 * s * t * t * to[1] +
                    t * t * t * to[2]);
        }
    }

    void run_quadratic() {
        std::array<Point, 2> to;
        if (!read_points(to))
            return;
        const Point from = current_;
        for (int i = 1; i <= CURVE_STEPS; ++i) {
            const double t = static_cast<double>(i) / CURVE_STEPS;
            const double s = 1 - t;
            move_to(s * s * from + 2 * s * t * to[0] + t * t * to[1]);
        }
    }

    const std::string_view text_;
    std::size_t position_ = 0;
    std::string_view token_;
    char command_ = 0;
    Point current_;
    Point start_;
    std::vector<Point> points_;
};

} // namespace

std::string_view next_path_token(std::string_view text, std::size_t& position) {
    for (; position < text.size(); ++position) {
        const std::size_t start = position;
        if (is_command(text[start])) {
            ++position;
            return text.substr(start, 1);
        }
        const std::size_t digits = start + (text[start] == '-' ? 1 : 0);
        const std::size_t end = skip_numeral(text, digits);
        if (end > digits) {
            position = skip_exponent(text, end);
            return text.substr(start, position - start);
        }
    }
    return {};
}

std::vector<Point> parse_path(std::string_view text) {
    return PathReader(text).read();
}

} // namespace Corvel::Svg
