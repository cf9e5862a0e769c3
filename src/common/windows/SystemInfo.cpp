#include "common/windows/SystemInfo.h"

#include "common/windows/mensagem.h"
#include "logging/Routine.h"

#include <QProcess>
#include <QStandardPaths>
#include <QStringList>

namespace tv::SystemInfo {

QString programa() {
    static const QStringList conhecidos{QStringLiteral("hardinfo"), QStringLiteral("hardinfo2"),
                                        QStringLiteral("kinfocenter"), QStringLiteral("mate-system-monitor"),
                                        QStringLiteral("gnome-system-monitor")};
    for (const QString& nome : conhecidos) {
        if (QString achado = QStandardPaths::findExecutable(nome); !achado.isEmpty()) {
            return achado;
        }
    }
    return {};
}

void mostra() {
    guarded("frmAbout.StartSysInfo", [] {
        const QString achado = programa();
        if (achado.isEmpty() || !QProcess::startDetached(achado, {})) {
            mensagem::mostra(QStringLiteral("System Information Is Unavailable At This Time"));
        }
    });
}

} // namespace tv::SystemInfo
