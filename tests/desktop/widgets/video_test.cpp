#include "desktop/media/asset_paths.h"
#include "desktop/widgets/video_widget.h"
#include "desktop/widgets/widget_support.h"

#include <gtest/gtest.h>

#include <QAudioOutput>
#include <QMediaPlayer>
#include <QScrollArea>
#include <QScrollBar>
#include <QSignalSpy>
#include <QTest>

using namespace Corvel;

namespace {

constexpr int patience_ms = 8000;

/// A red clip of 64 by 48 pixels and half a second.
SharedStyle clip_style(const std::function<void(NodeStyle&)>& fill_in = {}) {
    return styled([&](NodeStyle& s) {
        s.effective_source = "clip.webm";
        s.autoplay = true;
        s.muted = true;
        s.fill = {"#00ff00", false};
        if (fill_in)
            fill_in(s);
    });
}

class Video : public testing::Test {
protected:
    Video() { set_media_dirs({TEST_DATA_DIR}); }
};

bool is_red(const QColor& color) {
    return color.red() > 150 && color.green() < 80 && color.blue() < 80;
}

} // namespace

TEST_F(Video, PlaysInALoopWhileItIsTheActiveOne) {
    VideoWidget video(clip_style([](NodeStyle& s) { s.loop = true; }));
    video.resize(60, 60);
    EXPECT_FALSE(video.player) << "nothing of the back end before it plays";
    EXPECT_EQ(color_at(picture_of(video), 30, 30), "#ff00ff00");
    video.set_active(true);
    ASSERT_TRUE(video.player);
    EXPECT_TRUE(video.audio->isMuted());
    ASSERT_TRUE(QTest::qWaitFor([&] { return !video.frame.isNull(); }, patience_ms));
    EXPECT_TRUE(is_red(picture_of(video).pixelColor(30, 2))) << "it covers its area";

    QSignalSpy status(video.player, &QMediaPlayer::mediaStatusChanged);
    const auto ends = [&] {
        int count = 0;
        for (const auto& call : status)
            count += call[0].value<QMediaPlayer::MediaStatus>() == QMediaPlayer::EndOfMedia;
        return count;
    };
    EXPECT_TRUE(QTest::qWaitFor([&] { return ends() >= 2; }, patience_ms)) << "it starts again";
    video.set_active(false);
    EXPECT_NE(video.player->playbackState(), QMediaPlayer::PlayingState);

    video.apply_style(clip_style([](NodeStyle& s) {
        s.fit = "Contain";
        s.muted = false;
    }));
    EXPECT_FALSE(video.audio->isMuted());
    const QImage shot = picture_of(video);
    EXPECT_EQ(color_at(shot, 30, 2), "#ff00ff00");
    EXPECT_TRUE(is_red(shot.pixelColor(30, 30)));
    video.set_source("");
    EXPECT_TRUE(video.frame.isNull());
}

TEST_F(Video, APressTogglesPlayingOnlyWithControls) {
    VideoWidget video(clip_style([](NodeStyle& s) {
        s.autoplay = false;
        s.loop = true;
    }));
    video.resize(60, 60);
    video.set_active(true);
    EXPECT_FALSE(video.player) << "active, but not by itself";
    QTest::mousePress(&video, Qt::LeftButton);
    EXPECT_FALSE(video.player) << "no controls";
    video.controls = true;
    QTest::mousePress(&video, Qt::LeftButton);
    ASSERT_TRUE(video.player);
    ASSERT_TRUE(QTest::qWaitFor(
        [&] { return video.player->playbackState() == QMediaPlayer::PlayingState; }, patience_ms));
    QTest::mousePress(&video, Qt::LeftButton);
    EXPECT_EQ(video.player->playbackState(), QMediaPlayer::PausedState);
}

TEST_F(Video, ASourceThatCannotBePlayedStops) {
    for (const char* source : {"missing.webm", "/etc/hostname", ""}) {
        VideoWidget video(clip_style([&](NodeStyle& s) { s.effective_source = source; }));
        video.resize(20, 20);
        video.set_active(true);
        QTest::qWait(50);
        EXPECT_EQ(color_at(picture_of(video), 10, 10), "#ff00ff00") << source;
        if (video.player) {
            EXPECT_TRUE(QTest::qWaitFor(
                [&] { return video.player->playbackState() == QMediaPlayer::StoppedState; },
                patience_ms));
        }
    }
}

TEST_F(Video, TheOneNearestToTheMiddleOfItsViewportIsActive) {
    QScrollArea area;
    auto* content = new QWidget;
    content->resize(200, 1000);
    std::vector<VideoWidget*> videos;
    for (const int y : {0, 100, 600}) {
        auto* video = new VideoWidget(clip_style([](NodeStyle& s) { s.autoplay = false; }));
        video->setParent(content);
        video->setGeometry(0, y, 100, 100);
        videos.push_back(video);
    }
    area.setWidget(content);
    area.resize(220, 200);
    area.setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    area.setFrameStyle(0);
    const auto active = [&] {
        select_active_video(videos);
        std::string out;
        for (const VideoWidget* video : videos)
            out += video->active ? "x" : ".";
        return out;
    };
    EXPECT_EQ(active(), "...") << "nothing is visible yet";
    area.show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&area));
    EXPECT_EQ(active(), "x..") << "a tie goes to the earlier one";
    area.verticalScrollBar()->setValue(20);
    EXPECT_EQ(active(), ".x.");
    area.verticalScrollBar()->setValue(350);
    EXPECT_EQ(active(), "...");
    area.verticalScrollBar()->setValue(800);
    EXPECT_EQ(active(), "...");
    area.verticalScrollBar()->setValue(500);
    EXPECT_EQ(active(), "..x");
    videos[2]->hide();
    EXPECT_EQ(active(), "...");
}

// The sound library keeps its attempt at a connection where no sound server runs.
extern "C" const char* __lsan_default_suppressions();
extern "C" const char* __lsan_default_suppressions() {
    return "leak:libpulse\n";
}
