#include "common/windows/FileOperations.h"
#include "logging/Routine.h"

#include <QFileDialog>

namespace tv::FileOperations {

QString BrowseFolder(QWidget* dono, const QString& titulo) {
    return guarded("FileOperations.BrowseFolder", QString(), [&] {
        QFileDialog dialogo(dono, titulo);
        dialogo.setObjectName(QStringLiteral("dialogoPasta"));
        dialogo.setFileMode(QFileDialog::Directory);
        dialogo.setOption(QFileDialog::ShowDirsOnly);
        return dialogo.exec() == QDialog::Accepted ? dialogo.selectedFiles().value(0) : QString();
    });
}

} // namespace tv::FileOperations
