#include "svg/svg_scanner.h"

namespace Corvel::Svg {
namespace {

constexpr std::size_t NPOS = std::string_view::npos;
constexpr std::string_view COMMENT_OPEN = "<!--";
constexpr std::string_view COMMENT_CLOSE = "-->";
constexpr std::string_view cdata_open = "<![CDATA[";
constexpr std::string_view CDATA_CLOSE = "]]>";

bool is_space(char c) {
    return c == ' ' || c == '\t' || c == '\r' || c == '\n';
}

class Scanner {
public:
    explicit Scanner(SvgDocument& document)
        : document_(document)
        , text_(document.text) {}

    void run() {
        while (cursor_ < text_.size()) {
            const bool more = text_[cursor_] == '<' ? scan_markup() : scan_characters();
            if (!more)
                return;
        }
    }

private:
    SvgElement* top() { return stack_.empty() ? nullptr : &document_.elements[stack_.back()]; }

    bool starts_with(std::string_view opening) const {
        return text_.substr(cursor_, opening.size()) == opening;
    }

    void add_text(std::size_t from, std::size_t to) {
        if (SvgElement* element = top())
            element->text.append(text_.substr(from, to - from));
    }

    /// Moves just past `closing`; false if it does not come.
    bool skip_past(std::string_view closing) {
        const std::size_t found = text_.find(closing, cursor_);
        if (found == NPOS)
            return false;
        cursor_ = found + closing.size();
        return true;
    }

    bool scan_characters() {
        const std::size_t next = text_.find('<', cursor_);
        if (next == NPOS)
            return false;
        add_text(cursor_, next);
        cursor_ = next;
        return true;
    }

    bool scan_markup() {
        if (starts_with(COMMENT_OPEN))
            return skip_past(COMMENT_CLOSE);
        if (starts_with(cdata_open))
            return scan_cdata();
        if (starts_with("<?") || starts_with("<!"))
            return skip_past(">");
        if (starts_with("</"))
            return scan_end_tag();
        const std::size_t close = text_.find('>', cursor_);
        if (close == NPOS)
            return false;
        scan_start_tag(close);
        return true;
    }

    bool scan_cdata() {
        const std::size_t inner = cursor_ + cdata_open.size();
        const std::size_t close = text_.find(CDATA_CLOSE, inner);
        add_text(inner, close == NPOS ? text_.size() : close);
        if (close == NPOS)
            return false;
        cursor_ = close + CDATA_CLOSE.size();
        return true;
    }

    bool scan_end_tag() {
        const bool closed = skip_past(">");
        if (SvgElement* element = top()) {
            element->end = closed ? cursor_ : text_.size();
            stack_.pop_back();
        }
        return closed;
    }

    void scan_start_tag(std::size_t close) {
        SvgElement element;
        element.start = cursor_;
        std::size_t at = cursor_ + 1;
        while (at < close && !is_space(text_[at]) && text_[at] != '/')
            ++at;
        element.name = text_.substr(cursor_ + 1, at - cursor_ - 1);
        element.name_end = at;
        scan_attributes(element, at, close);

        const auto index = static_cast<std::int32_t>(document_.elements.size());
        if (!stack_.empty()) {
            element.parent = stack_.back();
            top()->children.push_back(index);
        }
        cursor_ = close + 1;
        if (text_[close - 1] == '/')
            element.end = cursor_;
        else
            stack_.push_back(index);
        document_.elements.push_back(std::move(element));
    }

    /// Skips white space from `at`, at most to `close`.
    std::size_t skip_spaces(std::size_t at, std::size_t close) const {
        while (at < close && is_space(text_[at]))
            ++at;
        return at;
    }

    void scan_attributes(SvgElement& element, std::size_t at, std::size_t close) const {
        while (true) {
            while (at < close && (is_space(text_[at]) || text_[at] == '/'))
                ++at;
            if (at == close)
                return;
            const std::size_t name_start = at;
            while (at < close && text_[at] != '=' && !is_space(text_[at]))
                ++at;
            SvgAttribute attribute{text_.substr(name_start, at - name_start), {}, at, at};
            at = skip_spaces(at, close);
            if (at < close && text_[at] == '=')
                at = scan_value(attribute, skip_spaces(at + 1, close), close);
            if (!attribute.name.empty())
                element.attributes.push_back(attribute);
        }
    }

    /// Reads the value at `at`, empty unless it is quoted. Returns the index just past it.
    std::size_t scan_value(SvgAttribute& attribute, std::size_t at, std::size_t close) const {
        attribute.value_start = attribute.value_end = at;
        if (at == close || (text_[at] != '"' && text_[at] != '\''))
            return at;
        const std::size_t quote = text_.substr(0, close).find(text_[at], at + 1);
        attribute.value_start = at + 1;
        attribute.value_end = quote == NPOS ? close : quote;
        attribute.value =
            text_.substr(attribute.value_start, attribute.value_end - attribute.value_start);
        return quote == NPOS ? close : quote + 1;
    }

    SvgDocument& document_;
    const std::string_view text_;
    std::size_t cursor_ = 0;
    std::vector<std::int32_t> stack_; ///< the open elements
};

} // namespace

void scan_elements(SvgDocument& document) {
    Scanner(document).run();
}

} // namespace Corvel::Svg
