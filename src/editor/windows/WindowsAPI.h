#pragma once

#include <QString>

class QPlainTextEdit;
class QPrinter;

/// The desktop's services: opening documents and mail links, and the printing of a text box.
namespace tv::WindowsAPI {

/// Opens a path or an address in the user's program for it. True when the desktop took it.
bool abreDocumento(const QString& caminhoOuEndereco);
/// Opens a mail to `endereco` in the user's mail program. True when the desktop took it.
bool abreEmail(const QString& endereco, QString& assunto, QString& corpo);
/// A text of the locale of the environment; only the decimal separator (item 14) is known.
QString textoDoLocal(int item);

inline constexpr int separadorDecimal = 14;

} // namespace tv::WindowsAPI
