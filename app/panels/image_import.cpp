#include "app/panels/image_import.h"

#include "app/app_context.h"
#include "runtime/corvel_app.h"
#include "site/config_files.h"
#include "site/path_text.h"

#include <system_error>
#include <utility>

namespace Lumenfold {

namespace fs = std::filesystem;

fs::path image_root(const AppContext& context) {
    if (context.edits.path.empty())
        return {};
    const fs::path folder = path_from_utf8(context.edits.path).parent_path();
    return context.active.kind == ConfigKind::Site ? folder : find_site_above(folder);
}

std::optional<ImportedImage> import_image(const fs::path& root, const fs::path& source) {
    const fs::path folder = root / "images";
    const fs::path copy = folder / source.filename();
    std::error_code error;
    fs::create_directories(folder, error);
    if (error)
        return std::nullopt;
    std::error_code missing; // of the copy, which need not exist yet
    if (!fs::equivalent(source, copy, missing) &&
        (!fs::copy_file(source, copy, fs::copy_options::overwrite_existing, error) || error))
        return std::nullopt;
    const std::string name = path_to_utf8(source.filename());
    return ImportedImage{path_to_utf8(copy), "/images/" + name, name};
}

void pick_image(const Context& context, const std::string& title, const std::string& filter,
                std::function<void(const fs::path& file)> chosen) {
    const fs::path root = image_root(*context);
    if (root.empty())
        return;
    std::error_code error;
    const fs::path images = root / "images";
    Corvel::PickRequest request;
    request.mode = "file";
    request.title = title;
    request.filter = filter;
    request.directory = path_to_utf8(fs::is_directory(images, error) ? images : root);
    context->app.pick_file(request, [context, config = context->edits.path,
                                     chosen = std::move(chosen)](const std::string& path) {
        if (!path.empty() && context->edits.path == config)
            chosen(path_from_utf8(path));
    });
}

void pick_icon(const Context& context, const std::string& title,
               std::function<void(const ImportedImage& image)> chosen) {
    pick_image(context, title, IMAGE_FILTER,
               [context, chosen = std::move(chosen)](const fs::path& file) {
                   if (const auto image = import_image(image_root(*context), file))
                       chosen(*image);
               });
}

} // namespace Lumenfold
