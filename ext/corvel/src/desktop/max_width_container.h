#pragma once

#include <QWidget>

namespace Corvel {

/// Holds one child and lays it out no wider than `max_width`, centred. In a column the container
/// itself takes all the width there is; in a row it is `bounded` to its child's share.
class MaxWidthContainer : public QWidget {
    Q_OBJECT
public:
    /// Takes `content` as its child.
    MaxWidthContainer(QWidget* content, int width_limit, QWidget* parent = nullptr);
    ~MaxWidthContainer() override;

    void set_max_width(int width_limit);
    /// Whether the container takes no more width than its child may have.
    void set_bounded(bool on);
    /// Puts the child in its place.
    void place();
    /// Lets go of a child that has moved elsewhere; the container is of no use afterwards.
    void release();

    bool eventFilter(QObject* watched, QEvent* event) override;
    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;
    int heightForWidth(int width) const override;
    bool hasHeightForWidth() const override;

    QWidget* child = nullptr;
    int max_width = 0;
    bool bounded = false;

protected:
    bool event(QEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void showEvent(QShowEvent* event) override;

private:
    QSize within_limits(QSize size) const;
};

} // namespace Corvel
