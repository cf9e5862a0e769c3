#pragma once

#include <QString>
#include <QStringList>

#include <filesystem>

class QWidget;

/// The dialogs with which the program asks for a file, and small helpers for file names. A cancelled dialog
/// is logged as a failure (number 32755) and gives an empty answer.
namespace tv::FileOperations {

inline constexpr int cancelado = 32755; ///< Number of "Cancel was selected.".

/// A new empty file with a name of its own that begins with "kvo", in `pasta`, or in the system's temporary
/// folder when that is empty (it is then filled in). Empty on failure, which is logged.
std::filesystem::path nomeTemporario(std::filesystem::path& pasta);

/// The title of a path: its last part.
QString GetFTitle(const QString& caminho);

/// "Selecionar Boleto": any number of files, or one.
QStringList selecionaVarios(QWidget* dono, bool varios);
/// "Abrir Boleto". `nome` is shown by default, with ".xml" added unless it holds it.
QString abreDocumento(QWidget* dono, QString& nome);
/// "Abrir Planilha ... ".
QString abrePlanilha(QWidget* dono);
/// "Salvar Boleto como ...".
QString salvaDocumento(QWidget* dono, QString& nome);
/// The folder browser with this caption; empty without a choice.
QString BrowseFolder(QWidget* dono, const QString& titulo);

} // namespace tv::FileOperations
