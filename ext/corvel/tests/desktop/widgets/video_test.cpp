#include "desktop/media/asset_paths.h"
#include "desktop/widgets/video_widget.h"
#include "desktop/widgets/widget_support.h"
#include "support/temp_dir.h"

#include <gtest/gtest.h>

#include <QAudioOutput>
#include <QMediaPlayer>
#include <QProcess>
#include <QScrollArea>
#include <QScrollBar>
#include <QSignalSpy>

using namespace Corvel;

namespace {

constexpr int patience_ms = 8000;
constexpr const char* green = "#ff00ff00"; ///< of the fill

class Video : public testing::Test {
protected:
    Video() { set_media_dirs({TEST_DATA_DIR}); }

    /// The style of a red clip of 64 by 48 pixels and half a second.
    static NodeStyle clip(bool autoplay, const std::string& source = "clip.webm") {
        return {.fill = {"#00ff00"},
                .effective_source = source,
                .autoplay = autoplay,
                .loop = true,
                .muted = true};
    }
    static bool reaches(VideoWidget& video, QMediaPlayer::PlaybackState state) {
        return QTest::qWaitFor([&] { return video.player->playbackState() == state; }, patience_ms);
    }
    static bool is_red(VideoWidget& video, int x, int y) {
        const QColor color = picture_of(video).pixelColor(x, y);
        return color.red() > 150 && color.green() < 80 && color.blue() < 80;
    }
};

} // namespace

TEST_F(Video, PlaysInALoopWhileItIsTheActiveOne) {
    VideoWidget video(clip(true));
    video.resize(60, 60);
    EXPECT_FALSE(video.player) << "nothing of the back end before it plays";
    video.set_active(true);
    ASSERT_TRUE(video.player);
    EXPECT_TRUE(video.audio->isMuted());
    QSignalSpy status(video.player, &QMediaPlayer::mediaStatusChanged);
    const QList<QVariant> end{QVariant::fromValue(QMediaPlayer::EndOfMedia)};
    EXPECT_TRUE(QTest::qWaitFor([&] { return status.count(end) >= 2; }, patience_ms)) << "again";
    EXPECT_TRUE(is_red(video, 30, 2)) << "it covers its area";
    video.set_active(false);
    EXPECT_NE(video.player->playbackState(), QMediaPlayer::PlayingState);

    NodeStyle contained = clip(true);
    contained.fit = "Contain";
    contained.muted = false;
    video.apply_style(contained);
    EXPECT_FALSE(video.audio->isMuted());
    EXPECT_EQ(color_at(video, 30, 2), green);
    EXPECT_TRUE(is_red(video, 30, 30));
    video.set_source("");
    EXPECT_EQ(color_at(video, 30, 30), green);
}

TEST_F(Video, APressTogglesPlayingOnlyWithControls) {
    VideoWidget video(clip(false));
    video.set_active(true);
    QTest::mousePress(&video, Qt::LeftButton);
    EXPECT_FALSE(video.player) << "active, but neither by itself nor by a press";
    video.controls = true;
    for (const auto state : {QMediaPlayer::PlayingState, QMediaPlayer::PausedState}) {
        QTest::mousePress(&video, Qt::LeftButton);
        EXPECT_TRUE(reaches(video, state));
    }
}

TEST_F(Video, ASourceThatCannotBePlayedStops) {
    for (const char* source : {"missing.webm", "/etc/hostname", ""}) {
        VideoWidget video(clip(true, source));
        video.resize(20, 20);
        video.set_active(true);
        QTest::qWait(50);
        EXPECT_EQ(color_at(video, 10, 10), green) << source;
        EXPECT_TRUE(!video.player || reaches(video, QMediaPlayer::StoppedState)) << source;
    }
}

TEST_F(Video, TheOneNearestToTheMiddleOfItsViewportIsActive) {
    QScrollArea area;
    auto* content = new QWidget;
    content->resize(200, 1000);
    std::vector<VideoWidget*> videos;
    for (const int y : {0, 100, 600}) {
        videos.push_back(new VideoWidget(clip(false)));
        videos.back()->setParent(content);
        videos.back()->setGeometry(0, y, 100, 100);
    }
    area.setWidget(content);
    area.resize(220, 200);
    area.setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    area.setFrameStyle(0);
    area.show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&area));
    const std::pair<int, const char*> cases[] = {
        {0, "x.."}, {20, ".x."}, {350, "..."}, {800, "..."}, {500, "..x"}}; // a tie: the earlier
    for (const auto& [scrolled, expected] : cases) {
        area.verticalScrollBar()->setValue(scrolled);
        select_active_video(videos);
        std::string active;
        for (const VideoWidget* video : videos)
            active += video->active ? "x" : ".";
        EXPECT_EQ(active, expected) << scrolled;
    }
    videos[2]->hide();
    select_active_video(videos);
    EXPECT_FALSE(videos[2]->active);
}

// The back end itself would end the process, so this goes on in a process of its own.
TEST_F(Video, StaysEmptyWithoutThePlugInsOfTheBackEnd) {
    const char* const inner = "CORVEL_TEST_WITHOUT_PLUG_INS";
    if (qEnvironmentVariableIsSet(inner)) {
        VideoWidget video(clip(true));
        video.resize(20, 20);
        video.set_active(true);
        QTest::qWait(50);
        EXPECT_FALSE(video.player);
        EXPECT_EQ(color_at(video, 10, 10), green);
        return;
    }
    const TestSupport::TempDir empty;
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(QString::fromLatin1(inner), QStringLiteral("1"));
    for (const char* name : {"GST_PLUGIN_SYSTEM_PATH_1_0", "GST_PLUGIN_PATH_1_0"})
        environment.insert(QString::fromLatin1(name),
                           QString::fromStdString(empty.path().string()));
    environment.insert(QStringLiteral("GST_REGISTRY"),
                       QString::fromStdString((empty / "registry").string()));
    QProcess process;
    process.setProcessEnvironment(environment);
    process.start(QCoreApplication::applicationFilePath(),
                  {QStringLiteral("--gtest_filter=Video.StaysEmptyWithoutThePlugInsOfTheBackEnd")});
    ASSERT_TRUE(process.waitForFinished());
    EXPECT_EQ(process.exitStatus(), QProcess::NormalExit);
    EXPECT_EQ(process.exitCode(), 0) << process.readAll().toStdString();
}

// The sound library keeps its attempt at a connection where no sound server runs.
extern "C" const char* __lsan_default_suppressions();
extern "C" const char* __lsan_default_suppressions() {
    return "leak:libpulse\n";
}
