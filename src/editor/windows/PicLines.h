#pragma once

#include <QColor>
#include <QPixmap>
#include <QWidget>

#include <optional>

namespace tv {

/// The strip beside a text that is meant for its line numbers. What it shows is painted on its surface by
/// others; nothing painted, it is blank.
class PicLines : public QWidget {
    Q_OBJECT
    Q_PROPERTY(QColor BackColor READ BackColor WRITE setBackColor)
    Q_PROPERTY(bool AutoRedraw READ AutoRedraw WRITE setAutoRedraw)
public:
    /// Bears the object name "picLines".
    explicit PicLines(QWidget* dono = nullptr);
    ~PicLines() override;

    /// The palette's window colour unless one was set.
    QColor BackColor() const;
    void setBackColor(const QColor& cor);
    /// Whether a painter of the surface should have the strip drawn anew at once.
    bool AutoRedraw() const noexcept { return autoRedraw_; }
    void setAutoRedraw(bool liga) noexcept { autoRedraw_ = liga; }
    void Refresh();

    /// The surface, of the strip's present size; its content is kept unless the size has changed.
    QPixmap& superficie();

protected:
    void paintEvent(QPaintEvent* evento) override;

private:
    std::optional<QColor> backColor_;
    bool autoRedraw_ = false;
    QPixmap superficie_;
};

} // namespace tv
