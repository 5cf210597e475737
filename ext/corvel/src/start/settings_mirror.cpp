#include "start/settings_mirror.h"

#include "runtime/corvel_app.h"

#include <QSettings>
#include <QString>

namespace Corvel {
namespace {

constexpr const char* STORE_GROUP = "store";
constexpr const char* ACTIVE_THEME = "themes/active_theme";

} // namespace

void load_store(CorvelApp& app) {
    QSettings settings;
    settings.beginGroup(QLatin1String(STORE_GROUP));
    const QStringList keys = settings.childKeys();
    for (const QString& key : keys)
        app.store[key.toStdString()] = settings.value(key).toString().toStdString();
    settings.endGroup();
}

void write_store_key(const std::string& key, const std::string& value) {
    QSettings settings;
    const QString full_key = QLatin1String(STORE_GROUP) + u'/' + QString::fromStdString(key);
    if (value.empty())
        settings.remove(full_key);
    else
        settings.setValue(full_key, QString::fromStdString(value));
}

std::string read_active_theme(const std::string& fallback) {
    return QSettings()
        .value(QLatin1String(ACTIVE_THEME), QString::fromStdString(fallback))
        .toString()
        .toStdString();
}

void write_active_theme(const std::string& display_name) {
    QSettings().setValue(QLatin1String(ACTIVE_THEME), QString::fromStdString(display_name));
}

} // namespace Corvel
