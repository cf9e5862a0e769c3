#include "common/windows/ctlCmDlg.h"

#include "platform/Error.h"

#include <QColorDialog>
#include <QDir>
#include <QFileDialog>
#include <QFileInfo>
#include <QFont>
#include <QFontDialog>
#include <QLineEdit>
#include <QPageSetupDialog>
#include <QPrintDialog>
#include <QPrinter>
#include <QWidget>

namespace tv {

namespace {

QColor corDe(int bgr) {
    return {bgr & 0xFF, (bgr >> 8) & 0xFF, (bgr >> 16) & 0xFF};
}

int numeroDa(const QColor& cor) {
    return cor.red() | (cor.green() << 8) | (cor.blue() << 16);
}

/// "*.xml;*.xsd" as "*.xml *.XML *.xsd *.XSD".
QString padroes(const QString& lista) {
    QStringList todos;
    for (const QString& parte : lista.split(QLatin1Char(';'), Qt::SkipEmptyParts)) {
        todos << parte.trimmed() << parte.trimmed().toUpper();
    }
    todos.removeDuplicates();
    return todos.join(QLatin1Char(' '));
}

/// The files chosen. Qt's dialog takes quotation marks for the ends of several names, though it was asked for
/// one only; there they belong to the name that was typed.
QStringList escolhidos(const QFileDialog& dialogo) {
    const auto* caixa = dialogo.findChild<QLineEdit*>(QStringLiteral("fileNameEdit"));
    if (caixa != nullptr && dialogo.fileMode() != QFileDialog::ExistingFiles &&
        caixa->text().contains(QLatin1Char('"'))) {
        return {dialogo.directory().absoluteFilePath(caixa->text())};
    }
    return dialogo.selectedFiles();
}

} // namespace

ctlCmDlg::ctlCmDlg(QWidget* dono)
    : dono_(dono) {}

ctlCmDlg::~ctlCmDlg() = default;

QStringList ctlCmDlg::filtros(const QString& pares) {
    QStringList filtros;
    const QStringList partes = pares.split(QLatin1Char('|'));
    for (qsizetype i = 0; i + 1 < partes.size(); i += 2) {
        filtros << QStringLiteral("%1 (%2)").arg(partes[i].trimmed(), padroes(partes[i + 1]));
    }
    return filtros;
}

QString ctlCmDlg::FileTitle() const {
    return QFileInfo(FileName()).fileName();
}

bool ctlCmDlg::ShowOpen() {
    QFileDialog dialogo(dono_);
    dialogo.setAcceptMode(QFileDialog::AcceptOpen);
    dialogo.setFileMode(MultiSelect ? QFileDialog::ExistingFiles : QFileDialog::ExistingFile);
    return mostraArquivos(dialogo);
}

bool ctlCmDlg::ShowSave() {
    QFileDialog dialogo(dono_);
    dialogo.setAcceptMode(QFileDialog::AcceptSave);
    dialogo.setFileMode(QFileDialog::AnyFile);
    dialogo.setOption(QFileDialog::DontConfirmOverwrite);
    return mostraArquivos(dialogo);
}

bool ctlCmDlg::ShowFont() {
    QFont fonte(FontName);
    fonte.setPointSizeF(FontSize);
    fonte.setBold(FontBold);
    fonte.setItalic(FontItalic);
    fonte.setUnderline(FontUnderline);
    fonte.setStrikeOut(FontStrikeThru);
    QFontDialog dialogo(fonte, dono_);
    dialogo.setObjectName(QStringLiteral("dialogoFonte"));
    if (!mostra(dialogo)) {
        return false;
    }
    fonte = dialogo.selectedFont();
    FontName = fonte.family();
    FontSize = fonte.pointSizeF();
    FontBold = fonte.bold();
    FontItalic = fonte.italic();
    FontUnderline = fonte.underline();
    FontStrikeThru = fonte.strikeOut();
    return true;
}

bool ctlCmDlg::ShowColor() {
    QColorDialog dialogo(corDe(FontColor), dono_);
    dialogo.setObjectName(QStringLiteral("dialogoCor"));
    if (!mostra(dialogo)) {
        return false;
    }
    FontColor = numeroDa(dialogo.selectedColor());
    return true;
}

bool ctlCmDlg::ShowPageSetup() {
    QPageSetupDialog dialogo(&impressora(), dono_);
    dialogo.setObjectName(QStringLiteral("dialogoPagina"));
    return mostra(dialogo);
}

bool ctlCmDlg::ShowPrinter() {
    QPrintDialog dialogo(&impressora(), dono_);
    dialogo.setObjectName(QStringLiteral("dialogoImpressora"));
    return mostra(dialogo);
}

QPrinter& ctlCmDlg::impressora() {
    if (impressora_ == nullptr) {
        impressora_ = std::make_unique<QPrinter>(QPrinter::HighResolution);
    }
    return *impressora_;
}

/// Shows a dialog until it is answered; true for a choice.
bool ctlCmDlg::mostra(QDialog& dialogo) const {
    if (!DialogTitle.isEmpty()) {
        dialogo.setWindowTitle(DialogTitle);
    }
    if (dialogo.exec() == QDialog::Accepted) {
        return true;
    }
    if (CancelError) {
        throw Error(cancelado, "cmdlg98.chm", "Cancel was selected.");
    }
    return false;
}

bool ctlCmDlg::mostraArquivos(QFileDialog& dialogo) {
    FileNames_.clear();
    dialogo.setObjectName(QStringLiteral("dialogoArquivo"));
    dialogo.setOption(QFileDialog::HideNameFilterDetails); // the filter's text names its pattern already
    dialogo.setDefaultSuffix(DefaultExt);
    const QStringList todos = filtros(Filter);
    if (!todos.isEmpty()) {
        dialogo.setNameFilters(todos);
        dialogo.selectNameFilter(todos.value(FilterIndex - 1, todos.front()));
    }
    proponha(dialogo);
    if (!mostra(dialogo)) {
        return false;
    }
    FileNames_ = escolhidos(dialogo);
    return true;
}

/// Where the dialog begins: in the proposed name's own folder, or else in `InitialDir`, or where the system
/// has it begin.
void ctlCmDlg::proponha(QFileDialog& dialogo) const {
    const QFileInfo proposta(DefaultFilename);
    const bool comPasta = DefaultFilename.contains(QLatin1Char('/'));
    for (const QString& pasta : {comPasta ? proposta.path() : QString(), InitialDir}) {
        if (!pasta.isEmpty() && QFileInfo(pasta).isDir()) {
            dialogo.setDirectory(pasta);
            break;
        }
    }
    if (!DefaultFilename.isEmpty()) {
        dialogo.selectFile(proposta.fileName());
    }
}

} // namespace tv
