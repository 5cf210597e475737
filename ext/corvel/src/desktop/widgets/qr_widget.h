#pragma once

#include "runtime/render_node.h"

#include <QWidget>

#include <cstdint>
#include <string>
#include <vector>

namespace Corvel {

/// A QR code (ISO/IEC 18004, error correction level M or better) whose modules join into smooth
/// blobs. Text too long for a code shows none. Clicks fall through it.
class QrWidget : public QWidget {
    Q_OBJECT
public:
    explicit QrWidget(QWidget* parent = nullptr);
    ~QrWidget() override;

    void set_data(const std::string& text);
    void set_style(const SharedStyle& value);
    void set_opacity(double value);

    std::string data;
    std::int32_t size = 0;             ///< modules a side; 0: nothing to show
    std::vector<std::uint8_t> modules; ///< one each, row by row, 1 for dark
    SharedStyle style;
    double opacity = 1.0;

protected:
    void paintEvent(QPaintEvent* event) override;
};

} // namespace Corvel
