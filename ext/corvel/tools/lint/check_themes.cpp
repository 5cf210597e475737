#include "checks.h"
#include "colors.h"
#include "json/json_depth.h"
#include "suggestions.h"
#include "text_files.h"
#include "theme/theme.h"

#include <nlohmann/json.hpp>

#include <map>
#include <optional>
#include <set>

namespace CorvelLint {
namespace {

using Corvel::ThemeValue;

std::vector<std::string> known_keys() {
    std::vector<std::string> keys{"Gradient"};
    for (const auto& [key, fallback] : Corvel::default_theme())
        keys.push_back(key);
    return keys;
}

const ThemeValue* default_of(const std::string& key) {
    for (const auto& [known, value] : Corvel::default_theme())
        if (known == key)
            return &value;
    return nullptr;
}

/// A theme file, and where its keys stand.
class ThemeFile {
public:
    ThemeFile(const std::filesystem::path& file, Findings& findings)
        : file_(file.string())
        , text_(read_text(file))
        , theme_(Corvel::parse_theme_file(text_))
        , findings_(findings) {}

    const std::string& file() const { return file_; }
    const std::optional<Corvel::Theme>& theme() const { return theme_; }

    void add(const std::string& at, const std::string& message, const std::string& help = {}) {
        const std::size_t found = at.empty() ? std::string::npos : text_.find('"' + at + '"');
        findings_.add({file_, found == std::string::npos ? 1 : line_of(text_, found)}, at, message,
                      help);
    }

    void check() {
        if (!theme_)
            return add_no_theme();
        const std::vector<std::string> known = known_keys();
        for (const auto& [key, value] : theme_->values) {
            const ThemeValue* const fallback = default_of(key);
            if (key == "Gradient")
                add(key, "`Gradient` is no gradient",
                    "write two texts, each a position and a colour: [\"0:#3a3c42\", "
                    "\"1:#42454d\"]");
            else if (fallback == nullptr)
                add(key, "no style reads the key `" + key + "`", did_you_mean(key, known));
            else if (value.index() != fallback->index())
                add(key, "`" + key + "` has a value of another kind",
                    std::holds_alternative<double>(*fallback) ? "write a number from 0 to 1"
                                                              : "write a colour in quotes");
            else if (const auto* color = std::get_if<std::string>(&value);
                     color != nullptr && !is_color(*color))
                add(*color, "`" + *color + "` is no colour", std::string(COLOR_HELP));
        }
        check_meta();
    }

private:
    void add_no_theme() {
        std::size_t at = 0;
        std::string reason = "the file is empty";
        if (Corvel::find_json_level_beyond(text_, Corvel::MAX_JSON_DEPTH) > 0) {
            reason = "the file nests too deep";
        } else {
            try {
                const nlohmann::json json = nlohmann::json::parse(text_);
                if (json.is_object() || json.is_array())
                    reason = "the file holds no member";
            } catch (const nlohmann::json::parse_error& error) {
                at = error.byte > 0 ? error.byte - 1 : 0;
                reason = "the file is no JSON from here on";
            } catch (const nlohmann::json::exception&) {
                reason = "a number of the file is out of range";
            }
        }
        at = std::min(at, text_.size());
        const std::size_t line_start = at == 0 ? 0 : text_.rfind('\n', at - 1) + 1;
        findings_.add_at({file_, line_of(text_, at)}, at - line_start + 1, 1, "no theme: " + reason,
                         "write { \"Name\": { \"Primary\": \"#36393f\" } }");
    }

    // Of a root with one object, as themes are written; others have no "_meta".
    void check_meta() {
        const nlohmann::json root = nlohmann::json::parse(text_, nullptr, false);
        if (!root.is_object() || !root.contains(theme_->name))
            return;
        const nlohmann::json& body = root.at(theme_->name);
        if (!body.is_object() || !body.contains("_meta"))
            return;
        const nlohmann::json& meta = body.at("_meta");
        const std::vector<std::string> known{"publisher", "uuid", "type"};
        if (!meta.is_object())
            return add("_meta", "`_meta` is no object",
                       "write { \"publisher\": \"...\", \"uuid\": \"...\" }");
        for (const auto& [key, value] : meta.items()) {
            if (std::find(known.begin(), known.end(), key) == known.end())
                add(key, "nothing reads `" + key + "` of `_meta`", "it holds " + in_words(known));
            else if (!value.is_string())
                add(key, "`" + key + "` of `_meta` is no text", "write it in quotes");
        }
    }

    std::string file_;
    std::string text_;
    std::optional<Corvel::Theme> theme_;
    Findings& findings_;
};

} // namespace

void check_themes(const Options& options, Findings& findings) {
    std::vector<ThemeFile> files;
    std::map<std::string, std::string> file_of; // by display name
    std::set<std::string> keys;
    for (const std::filesystem::path& folder : options.themes)
        for (const std::filesystem::path& path : files_below(folder, ".json")) {
            ThemeFile& file = files.emplace_back(path, findings);
            file.check();
            if (!file.theme())
                continue;
            const std::string name = Corvel::theme_display_name(*file.theme());
            if (const auto [other, is_new] = file_of.emplace(name, file.file()); !is_new)
                file.add(file.theme()->name, "the theme `" + name + "` is also in " + other->second,
                         "give one of them another name, publisher or uuid");
            for (const auto& [key, value] : file.theme()->values)
                if (default_of(key) != nullptr)
                    keys.insert(key);
        }
    for (ThemeFile& file : files)
        for (const std::string& key : keys)
            if (file.theme() && !file.theme()->values.contains(key))
                file.add(file.theme()->name, "no `" + key + "`, which other themes have",
                         "without it the theme shows a default");
}

} // namespace CorvelLint
