#pragma once

#include <QObject>
#include <QString>
#include <QStringList>

#include <cstdint>
#include <memory>

class QDialog;
class QFileDialog;
class QPrinter;
class QWidget;

namespace tv {

/// The system's dialogs behind one set of properties: files, font, colour, page and printer. Set the
/// properties, show a dialog, read the choice. A dialog left without a choice raises Error 32755 ("Cancel was
/// selected.") when `CancelError` is set, and tells so by false otherwise.
class ctlCmDlg : public QObject {
    Q_OBJECT
    Q_PROPERTY(bool CancelError MEMBER CancelError)
    Q_PROPERTY(bool MultiSelect MEMBER MultiSelect)
    Q_PROPERTY(QString DefaultFilename MEMBER DefaultFilename)
    Q_PROPERTY(QString DefaultExt MEMBER DefaultExt)
    Q_PROPERTY(QString DialogTitle MEMBER DialogTitle)
    Q_PROPERTY(QString InitialDir MEMBER InitialDir)
    Q_PROPERTY(QString Filter MEMBER Filter)
    Q_PROPERTY(qint16 FilterIndex MEMBER FilterIndex)
    Q_PROPERTY(QString FontName MEMBER FontName)
    Q_PROPERTY(double FontSize MEMBER FontSize)
    Q_PROPERTY(int FontColor MEMBER FontColor)
    Q_PROPERTY(bool FontBold MEMBER FontBold)
    Q_PROPERTY(bool FontItalic MEMBER FontItalic)
    Q_PROPERTY(bool FontUnderline MEMBER FontUnderline)
    Q_PROPERTY(bool FontStrikeThru MEMBER FontStrikeThru)
    Q_PROPERTY(QString FileName READ FileName)
    Q_PROPERTY(QStringList FileNames READ FileNames)
public:
    static constexpr std::int32_t cancelado = 32755; ///< Number of "Cancel was selected.".

    /// `dono` is the window in front of which the dialogs stand.
    explicit ctlCmDlg(QWidget* dono = nullptr);
    ~ctlCmDlg() override;

    bool CancelError = false;     ///< Whether a cancelled dialog raises Error 32755.
    bool MultiSelect = false;     ///< Whether ShowOpen takes more than one file.
    QString DefaultFilename;      ///< Name shown at first, with or without its folder.
    QString DefaultExt;           ///< Put behind typed names that have no extension, without its point.
    QString DialogTitle;          ///< Empty leaves the title to the system.
    QString InitialDir;           ///< Folder shown at first; one that does not exist leaves it to the system.
    QString Filter;               ///< Pairs of text and pattern, all separated by "|".
    std::int16_t FilterIndex = 1; ///< Which pair of `Filter` is in use, from 1.
    QString FontName = QStringLiteral("Arial");
    double FontSize = 10; ///< Points.
    int FontColor = 0;    ///< 0xBBGGRR.
    bool FontBold = false;
    bool FontItalic = false;
    bool FontUnderline = false;
    bool FontStrikeThru = false;

    /// Asks for a file that exists, or with `MultiSelect` for any number of them.
    bool ShowOpen();
    /// Asks for a name to save under. It does not ask about a file that is there already: whoever saves keeps
    /// the old one.
    bool ShowSave();
    /// Asks for a font, from and into the font properties. The colour has a dialog of its own.
    bool ShowFont();
    /// Asks for a colour, from and into `FontColor`.
    bool ShowColor();
    /// Asks for paper and margins, from and into `impressora`.
    bool ShowPageSetup();
    /// Asks for the printer, its pages and copies, from and into `impressora`.
    bool ShowPrinter();

    /// The file chosen last, with its folder; of several the first.
    QString FileName() const { return FileNames_.value(0); }
    /// Its last part.
    QString FileTitle() const;
    /// All files chosen last, each with its folder.
    const QStringList& FileNames() const noexcept { return FileNames_; }

    /// The printer with the settings chosen; the system's own printer at first.
    QPrinter& impressora();

    /// The filters of a file dialog for pairs of text and pattern: "Text (*.ext) | *.ext" gives
    /// "Text (*.ext) (*.ext *.EXT)". Patterns are separated by ";"; each is given in capitals too, since file
    /// names may differ in case.
    static QStringList filtros(const QString& pares);

private:
    bool mostra(QDialog& dialogo) const;
    bool mostraArquivos(QFileDialog& dialogo);
    void proponha(QFileDialog& dialogo) const;

    QWidget* dono_;
    QStringList FileNames_;
    std::unique_ptr<QPrinter> impressora_; // made when it is needed: looking for printers takes its time
};

} // namespace tv
