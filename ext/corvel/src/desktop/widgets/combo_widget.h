#pragma once

#include "desktop/widgets/vbox_widget.h"

#include <QMargins>
#include <QString>

#include <functional>
#include <string>
#include <vector>

class QComboBox;
class QKeyEvent;

namespace Corvel {

/// A list to choose from, in a painted box with a chevron.
class ComboWidget : public VBoxWidget {
    Q_OBJECT
public:
    explicit ComboWidget(QWidget* parent = nullptr);
    ~ComboWidget() override;

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;
    bool eventFilter(QObject* watched, QEvent* event) override;

    /// Shows the item of that value; an unknown one changes nothing. Not reported.
    void show_value(const std::string& value);

    std::function<void(const std::string&)> on_select; ///< the user chose the item of this value
    QComboBox* combo = nullptr;
    std::vector<ComboItem> items;
    QMargins insets;
    QString text_color;
    double font_size = 14.0;

protected:
    void mousePressEvent(QMouseEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;

private:
    friend void apply_combo_style(ComboWidget*, const SharedStyle&, const std::vector<ComboItem>&,
                                  const std::string&);
    void lay_out();
    bool take_key(QKeyEvent* event);
};

/// Brings the box up to its node. Items that did not change are not rebuilt, which keeps an open
/// list open.
void apply_combo_style(ComboWidget* combo, const SharedStyle& style,
                       const std::vector<ComboItem>& items, const std::string& selected);

} // namespace Corvel
