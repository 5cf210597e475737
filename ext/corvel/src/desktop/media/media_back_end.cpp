#include "desktop/media/media_back_end.h"

#include <QLibrary>
#include <QString>

#include <algorithm>
#include <iterator>

namespace Corvel {
namespace {

/// What Qt's back end takes for granted of GStreamer.
constexpr const char* ELEMENTS[] = {"playbin",      "uridecodebin", "videoconvert",
                                    "audioconvert", "queue",        "fakesink"};

/// Makes one of each element, by the library that the back end itself would load.
bool gstreamer_is_complete() {
    QLibrary library(QStringLiteral("gstreamer-1.0"), 0);
    using Init = int (*)(int*, char***, void**);
    using Make = void* (*)(const char* kind, const char* name);
    using Unref = void (*)(void*);
    const auto init = reinterpret_cast<Init>(library.resolve("gst_init_check"));
    const auto make = reinterpret_cast<Make>(library.resolve("gst_element_factory_make"));
    const auto unref = reinterpret_cast<Unref>(library.resolve("gst_object_unref"));
    if (!init || !make || !unref)
        return true; // Qt finds no GStreamer either and takes another back end.
    if (!init(nullptr, nullptr, nullptr))
        return false;
    return std::all_of(std::begin(ELEMENTS), std::end(ELEMENTS), [&](const char* kind) {
        void* element = make(kind, nullptr);
        if (element)
            unref(element);
        return element != nullptr;
    });
}

bool find_out() {
    const QString chosen = qEnvironmentVariable("QT_MEDIA_BACKEND");
    if (chosen.isEmpty() || chosen == QLatin1String("gstreamer"))
        return gstreamer_is_complete();
    return chosen == QLatin1String("ffmpeg"); // any other name ends the process
}

} // namespace

bool media_back_end_usable() {
#if defined(Q_OS_LINUX)
    static const bool usable = find_out();
    return usable;
#else
    return true;
#endif
}

} // namespace Corvel
