#include "desktop/media/less_motion.h"

#include <QFile>
#include <QSettings>
#include <QStandardPaths>
#include <QVariant>

namespace Corvel {

bool read_less_motion() {
    const QByteArray asked = qgetenv("CORVEL_LESS_MOTION");
    if (!asked.isEmpty())
        return asked != "0";
    const QString folder = QStandardPaths::writableLocation(QStandardPaths::GenericConfigLocation);
    for (const char* name : {"/gtk-4.0/settings.ini", "/gtk-3.0/settings.ini"}) {
        const QString file = folder + QLatin1String(name);
        if (!QFile::exists(file))
            continue;
        const QSettings settings(file, QSettings::IniFormat);
        const QVariant animates = settings.value(QStringLiteral("Settings/gtk-enable-animations"));
        if (animates.isValid()) {
            const QString word = animates.toString().toLower();
            return word == QLatin1String("0") || word == QLatin1String("false");
        }
    }
    return false;
}

bool prefers_less_motion() {
    static const bool asked = read_less_motion();
    return asked;
}

} // namespace Corvel
