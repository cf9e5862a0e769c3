#pragma once

#include <QApplication>
#include <QCursor>

namespace tv {

/// The busy mouse pointer for the life of the object. The hourglass stops the user, the arrow with hourglass
/// does not.
class Espera {
public:
    enum class Ponteiro { Ampulheta, SetaComAmpulheta };
    explicit Espera(Ponteiro ponteiro = Ponteiro::Ampulheta) {
        QApplication::setOverrideCursor(ponteiro == Ponteiro::Ampulheta ? Qt::WaitCursor : Qt::BusyCursor);
    }
    ~Espera() { QApplication::restoreOverrideCursor(); }
    Espera(const Espera&) = delete;
    Espera& operator=(const Espera&) = delete;
};

} // namespace tv
