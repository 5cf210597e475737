#include "app/site_panels/favicon_picker.h"

#include "app/context/app_context.h"
#include "app/context/json_view.h"
#include "app/context/window_paths.h"
#include "app/editing/edit_queue.h"
#include "app/editing/editor_text.h"
#include "app/editing/reload.h"
#include "app/editing/saving.h"
#include "app/editing/text_view.h"
#include "app/forms/image_import.h"
#include "runtime/corvel_app.h"
#include "site/config_files.h"
#include "site/favicon.h"
#include "site/path_text.h"

#include <nlohmann/json.hpp>

#include <algorithm>
#include <cctype>
#include <filesystem>
#include <optional>
#include <system_error>

namespace Lumenfold {

namespace fs = std::filesystem;

namespace {

const std::string PICKER =
    Paths::SITE_CONFIGURATOR + "/Editor Panel/Panels/Website Panel/Favicon Picker";
const std::string PREVIEW_ROW = PICKER + "/Preview Row";
const std::string HINT = PICKER + "/Hint";
const std::string FROM_LOGO_CHECKBOX = PICKER + "/Controls Row/From Logo Checkbox";
const std::string BROWSE_BUTTON = PICKER + "/Controls Row/Browse Button";
const std::string BACKGROUND_FIELD = PICKER + "/Background Row/Background Field";

struct Tile {
    std::string node;
    const char* file; ///< in the site's folder "favicon"
};
const Tile TILES[] = {
    {PREVIEW_ROW + "/Large Cell/Tile/Image", "android-chrome-512x512.png"},
    {PREVIEW_ROW + "/Medium Cell/Tile/Image", "favicon-32x32.png"},
    {PREVIEW_ROW + "/Small Cell/Tile/Image", "favicon-16x16.png"},
};
constexpr const char* PROOF_FILE = "favicon-32x32.png"; ///< its presence shows the tiles

constexpr const char* FALLBACK_THEME = "Dark (orrinworkshopllc)";
constexpr const char* FALLBACK_BACKGROUND = "#ffffff";

fs::path favicon_folder(const AppContext& context) {
    return path_from_utf8(context.edits.path).parent_path() / "favicon";
}

void set_hint(const Context& context, const std::string& text) {
    context->app.set_text(HINT, text);
    context->app.set_visible(HINT, !text.empty());
}

void refresh_tiles(const Context& context) {
    const fs::path folder = favicon_folder(*context);
    std::error_code error;
    context->app.set_visible(PREVIEW_ROW, fs::exists(folder / PROOF_FILE, error));
    for (const Tile& tile : TILES) {
        const fs::path file = folder / tile.file;
        const bool there = fs::exists(file, error);
        context->app.set_source(tile.node, there ? path_to_utf8(file) : std::string());
    }
}

std::string generate(const Context& context, const std::string& source) {
    const FaviconGenerator& generator = favicon_generator();
    if (!generator)
        return "Favicon generation is unavailable in this build.";
    return generator({.source = source,
                      .output_dir = path_to_utf8(favicon_folder(*context)),
                      .background = context->site.favicon.background});
}

void show_success(const Context& context) {
    set_hint(context, "Generated into favicon/ (ships with the next build).");
    refresh_tiles(context);
    // The files keep their names.
    for (const Tile& tile : TILES)
        context->app.reread_source(path_to_utf8(favicon_folder(*context) / tile.file));
}

/// Generates and tells how it went; true on success.
bool regenerate(const Context& context, const std::string& source) {
    const std::string error = generate(context, source);
    if (!error.empty())
        set_hint(context, error);
    else
        show_success(context);
    return error.empty();
}

/// False when the document holds something else than an object under "branding".
bool edit_favicon_mode(Json& site, bool from_logo) {
    if (!site.is_object())
        return false;
    if (!from_logo) {
        const auto branding = site.find("branding");
        if (branding != site.end() && branding->is_object())
            branding->erase("favicon_from_logo");
        return true;
    }
    Json& branding = site["branding"];
    if (!branding.is_object() && !branding.is_null())
        return false;
    branding["favicon_from_logo"] = true;
    branding.erase("favicon_source");
    return true;
}

/// Writes the choice directly: a key is removed, which no queued edit can do.
void set_favicon_mode(const Context& context, bool from_logo) {
    flush_edits(context);
    const fs::path file = path_from_utf8(context->edits.path);
    std::optional<Json> site = read_json_file(file);
    if (!site || !edit_favicon_mode(*site, from_logo))
        return;
    const std::optional<std::string> text = dump_config(*site);
    const bool is_shown = shows_disk(*context);
    if (!text || !save_text(context, file, *text))
        return;
    if (is_shown)
        take_written(context);
    else
        reload_after_change(context);
}

std::string default_background(const Context& context, const Json& site) {
    std::string name = text_at(member_at(site, "corvel"), "default_theme");
    if (name.empty())
        name = FALLBACK_THEME;
    const auto& themes = context->app.themes();
    const auto theme = themes.find(name);
    if (theme == themes.end())
        return FALLBACK_BACKGROUND;
    const std::string& colour = Corvel::theme_value(theme->second, "Primary");
    return colour.empty() ? FALLBACK_BACKGROUND : colour;
}

void use_image(const Context& context, const fs::path& file) {
    const std::optional<ImportedImage> image = import_image(context, file);
    if (!image || !regenerate(context, image->path))
        return;
    if (context->app.is_checked(FROM_LOGO_CHECKBOX)) {
        context->app.set_checked(FROM_LOGO_CHECKBOX, false);
        set_favicon_mode(context, false);
    }
    context->site.favicon.source = image->path;
    queue_edit(context, "/branding/favicon_source", image->reference);
}

void start_following_logo(const Context& context) {
    const std::string& logo = context->site.preview.logo_path;
    if (logo.empty())
        set_hint(context, "Set a logo above first.");
    else if (regenerate(context, logo)) {
        context->site.favicon.source = logo;
        set_favicon_mode(context, true);
        return;
    }
    context->app.set_checked(FROM_LOGO_CHECKBOX, false);
}

void from_logo_clicked(const Context& context) {
    if (!site_is_open(*context)) {
        context->app.set_checked(FROM_LOGO_CHECKBOX, false);
        return;
    }
    if (context->app.is_checked(FROM_LOGO_CHECKBOX)) {
        start_following_logo(context);
        return;
    }
    context->site.favicon.source.clear();
    set_favicon_mode(context, false);
    set_hint(context, "");
}

bool is_complete_colour(const std::string& text) {
    return text.empty() || (text.size() == 7 && text[0] == '#' &&
                            std::all_of(text.begin() + 1, text.end(),
                                        [](unsigned char c) { return std::isxdigit(c) != 0; }));
}

void background_changed(const Context& context, const std::string& text) {
    FaviconState& favicon = context->site.favicon;
    favicon.background = text;
    queue_edit(context, "/branding/favicon_background", text);
    if (site_is_open(*context) && !favicon.source.empty() && is_complete_colour(text))
        regenerate(context, favicon.source);
}

} // namespace

void fill_favicon_picker(const Context& context, const Json& site) {
    const Json& branding = member_at(site, "branding");
    FaviconState& favicon = context->site.favicon;
    const bool from_logo = flag_at(branding, "favicon_from_logo");
    context->app.set_checked(FROM_LOGO_CHECKBOX, from_logo);
    favicon.source = from_logo ? context->site.preview.logo_path
                               : path_to_utf8(resolve_image(image_root(*context),
                                                            text_at(branding, "favicon_source")));
    favicon.background = text_at(branding, "favicon_background");
    if (favicon.background.empty())
        favicon.background = default_background(context, site);
    fill_editor(context->app, BACKGROUND_FIELD, favicon.background);
    set_hint(context, "");
    refresh_tiles(context);
}

void wire_favicon_picker(const Context& context) {
    Corvel::CorvelApp& app = context->app;
    app.on_click(FROM_LOGO_CHECKBOX, [context] { from_logo_clicked(context); });
    app.on_click(BROWSE_BUTTON, [context] {
        pick_image(context, "Select a favicon source image (copied into your site)",
                   "Images (*.svg *.png *.jpg *.jpeg *.webp)",
                   [context](const fs::path& file) { use_image(context, file); });
    });
    app.on_input(BACKGROUND_FIELD,
                 [context](const std::string& text) { background_changed(context, text); });
}

void favicons_follow_logo(const Context& context, const std::string& logo) {
    if (context->app.is_checked(FROM_LOGO_CHECKBOX) && regenerate(context, logo))
        context->site.favicon.source = logo;
}

} // namespace Lumenfold
