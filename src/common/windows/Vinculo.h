#pragma once

#include <QLabel>

namespace tv {

/// A label that acts: a click anywhere on it, or Enter and the space bar while it has the keyboard.
class Vinculo : public QLabel {
    Q_OBJECT
public:
    explicit Vinculo(QWidget* dono = nullptr);

Q_SIGNALS:
    void acionado();

protected:
    void mouseReleaseEvent(QMouseEvent* evento) override;
    void keyPressEvent(QKeyEvent* evento) override;
    void paintEvent(QPaintEvent* evento) override;
};

} // namespace tv
