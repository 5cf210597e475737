#pragma once

#include "desktop/widgets/media_widget.h"

#include <QImage>
#include <QUrl>

#include <string>
#include <vector>

class QAudioOutput;
class QMediaPlayer;
class QVideoSink;

namespace Corvel {

/// A video that plays while it is the active one. Nothing of the media back end is made before it
/// first plays; a failure stops it at its last frame, and it stays empty where the back end is
/// incomplete.
class VideoWidget : public MediaWidget {
    Q_OBJECT
public:
    /// Takes the style's flags and its effective source.
    explicit VideoWidget(const SharedStyle& node_style, QWidget* parent = nullptr);
    ~VideoWidget() override;

    void apply_style(const SharedStyle& value) override;
    void set_source(const std::string& value) override;
    QSize natural_size() const override;

    /// Makes this the video that may play, or no longer: gaining it starts an `autoplay` video,
    /// losing it pauses.
    void set_active(bool on);
    /// Plays from where it stands, if there is a source.
    void start();

    QMediaPlayer* player = nullptr; ///< these three: null until first needed, owned by the widget
    QVideoSink* sink = nullptr;
    QAudioOutput* audio = nullptr;
    QUrl url;
    QImage frame; ///< the frame on screen
    bool autoplay = false;
    bool loop = false;
    bool controls = false;   ///< a press toggles between play and pause
    bool source_set = false; ///< the player has been given `url`
    bool active = false;
    std::string source;
    SharedStyle style;

protected:
    void mousePressEvent(QMouseEvent* event) override;
    void paintEvent(QPaintEvent* event) override;

private:
    void ensure_player();
    void restart();
};

/// Makes the visible video whose centre is nearest to the centre of its viewport, by height, the
/// active one (the earlier on a tie) and all others inactive.
void select_active_video(const std::vector<VideoWidget*>& videos);

} // namespace Corvel
