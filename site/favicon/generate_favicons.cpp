#include "site/favicon/generate_favicons.h"

#include "site/favicon/icon_source.h"
#include "site/favicon/write_ico.h"

#include <QColor>
#include <QDir>
#include <QImage>
#include <QString>

#include <array>
#include <vector>

namespace Lumenfold {

namespace {

struct PngIcon {
    const char* name;
    int size; ///< pixels
    bool transparent;
};

constexpr std::array<PngIcon, 5> PNG_ICONS = {{
    {"favicon-16x16.png", 16, true},
    {"favicon-32x32.png", 32, true},
    {"apple-touch-icon.png", 180, false},
    {"android-chrome-192x192.png", 192, false},
    {"android-chrome-512x512.png", 512, false},
}};
constexpr std::array<int, 3> ICO_SIZES = {16, 32, 48};
constexpr const char* ICO_NAME = "favicon.ico";

} // namespace

std::string generate_favicons(const FaviconRequest& request) {
    IconSource source;
    if (const std::string error = source.load(request.source); !error.empty())
        return error;
    const std::string colour = request.background.empty() ? "#ffffff" : request.background;
    const QColor background(QString::fromStdString(colour));
    if (!background.isValid())
        return "Background \"" + colour + "\" is not a valid color.";
    const QString folder = QString::fromStdString(request.output_dir);
    if (!QDir().mkpath(folder))
        return "Could not create " + request.output_dir + ".";
    const QString prefix = folder + QLatin1Char('/');
    for (const PngIcon& icon : PNG_ICONS) {
        const QImage image =
            source.render_square(icon.size, icon.transparent ? Qt::transparent : background);
        if (!image.save(prefix + QLatin1String(icon.name)))
            return std::string("Could not write ") + icon.name + ".";
    }
    std::vector<QImage> frames;
    for (const int size : ICO_SIZES)
        frames.push_back(source.render_square(size, Qt::transparent));
    if (!write_ico(prefix + QLatin1String(ICO_NAME), frames))
        return std::string("Could not write ") + ICO_NAME + ".";
    return {};
}

} // namespace Lumenfold
