#include "common/windows/FileOperations.h"

#include "common/NomesDeArquivo.h"
#include "common/windows/ctlCmDlg.h"
#include "common/windows/textoQt.h"
#include "logging/Routine.h"
#include "platform/Files.h"

#include <QFileInfo>

namespace tv::FileOperations {

namespace {

constexpr auto filtroXml = "Arquivos XML (*.xml) | *.xml";
constexpr auto filtroXls = "Arquivos XLS (*.xls) | *.xls";

/// A dialog for boletos: a title, the name that it proposes and what stands behind typed names.
void preparaDocumento(ctlCmDlg& dialogo, const QString& titulo, const QString& nome) {
    dialogo.DialogTitle = titulo;
    dialogo.DefaultFilename = paraQt(nomes::comExtensaoXml(paraUtf8(nome)));
    dialogo.DefaultExt = QStringLiteral("xml");
    dialogo.Filter = paraQt(filtroXml);
}

/// Shows the dialog until the file chosen has a title that may be used. Throws Error 32755 when the user
/// leaves it.
QString escolhe(ctlCmDlg& dialogo, bool (ctlCmDlg::*mostra)()) {
    dialogo.CancelError = true;
    (dialogo.*mostra)();
    while (!nomes::tituloValido(paraUtf8(dialogo.FileTitle()))) {
        dialogo.DefaultFilename = dialogo.FileName();
        (dialogo.*mostra)();
    }
    return dialogo.FileName();
}

} // namespace

std::filesystem::path nomeTemporario(std::filesystem::path& pasta) {
    return guarded("FileOperations.nomeTemporario", std::filesystem::path(), [&] {
        if (pasta.empty()) {
            pasta = std::filesystem::temp_directory_path();
        }
        return files::createTemporary(pasta, "kvo");
    });
}

QString GetFTitle(const QString& caminho) {
    return QFileInfo(caminho).fileName();
}

QStringList selecionaVarios(QWidget* dono, bool varios) {
    return guarded("FileOperations.selecionaVarios", QStringList(), [&] {
        ctlCmDlg dialogo(dono);
        dialogo.DialogTitle = QStringLiteral("Selecionar Boleto");
        dialogo.Filter = paraQt(filtroXml);
        dialogo.MultiSelect = varios;
        dialogo.CancelError = true;
        dialogo.ShowOpen();
        return dialogo.FileNames();
    });
}

QString abreDocumento(QWidget* dono, QString& nome) {
    return guarded("FileOperations.abreDocumento", QString(), [&] {
        ctlCmDlg dialogo(dono);
        preparaDocumento(dialogo, QStringLiteral("Abrir Boleto"), nome);
        return escolhe(dialogo, &ctlCmDlg::ShowOpen);
    });
}

QString abrePlanilha(QWidget* dono) {
    return guarded("FileOperations.abrePlanilha", QString(), [&] {
        ctlCmDlg dialogo(dono);
        dialogo.DialogTitle = QStringLiteral("Abrir Planilha ... ");
        dialogo.Filter = paraQt(filtroXls);
        return escolhe(dialogo, &ctlCmDlg::ShowOpen);
    });
}

QString salvaDocumento(QWidget* dono, QString& nome) {
    return guarded("FileOperations.salvaDocumento", QString(), [&] {
        ctlCmDlg dialogo(dono);
        preparaDocumento(dialogo, QStringLiteral("Salvar Boleto como ..."), nome);
        return escolhe(dialogo, &ctlCmDlg::ShowSave);
    });
}

} // namespace tv::FileOperations
