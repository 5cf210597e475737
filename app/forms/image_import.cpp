#include "app/forms/image_import.h"

#include "app/context/app_context.h"
#include "runtime/corvel_app.h"
#include "site/config_files.h"
#include "site/import_file.h"
#include "site/path_text.h"

#include <system_error>
#include <utility>

namespace Lumenfold {

namespace fs = std::filesystem;

fs::path image_root(const AppContext& context) {
    if (!anything_is_open(context))
        return {};
    const fs::path folder = path_from_utf8(context.edits.path).parent_path();
    return active_config(context).kind == ConfigKind::Site ? folder : find_site_above(folder);
}

namespace {

bool copy_image(const Context& context, const fs::path& source, NameTaken name_taken,
                ImportedFile& copy) {
    const Result copied = import_file(image_root(*context), "images", source, name_taken, copy);
    if (!copied)
        context->message_dialog.show("Couldn't Copy Image", copied.error());
    return static_cast<bool>(copied);
}

} // namespace

std::optional<ImportedImage> import_image(const Context& context, const fs::path& source) {
    const fs::path place = image_root(*context) / "images" / source.filename();
    std::error_code ignored;
    const bool replaced = fs::exists(place, ignored) && !fs::equivalent(source, place, ignored);
    ImportedFile copy;
    if (!copy_image(context, source, NameTaken::Overwrite, copy))
        return std::nullopt;
    const std::string file = path_to_utf8(copy.file);
    if (replaced)
        context->app.reread_source(file);
    return ImportedImage{file, "/" + copy.reference, path_to_utf8(copy.file.filename())};
}

bool import_icon(const Context& context, const PickedIcon& icon, std::string& reference) {
    if (icon.empty())
        return true;
    ImportedFile copy;
    if (!copy_image(context, icon, NameTaken::FreeName, copy))
        return false;
    reference = "/" + copy.reference;
    return true;
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

} // namespace Lumenfold
