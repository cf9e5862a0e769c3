#pragma once

#include <QString>

class QPlainTextEdit;
class QPrinter;

/// The desktop's services: opening documents and mail links, and the printing of a text box.
namespace tv::WindowsAPI {

/// Opens a document by its path or address in the user's program for it. True when the desktop took it.
bool abreDocumento(const QString& caminhoOuEndereco);
/// Opens a mail to `endereco` in the user's mail program. True when the desktop took it.
bool abreEmail(const QString& endereco, QString& assunto, QString& corpo);
/// A text of the locale of the environment; only the decimal separator (item 14) is known.
QString textoDoLocal(int item);

inline constexpr int separadorDecimal = 14;

/// Prints the box's text page by page, in the box's font and in black; lines wider than the page are wrapped.
/// The margins are twips from the paper's edges. Failures are logged: the number is 482 when there is no
/// printer or it fails.
void PrintRTF(const QPlainTextEdit& caixa, int esquerda, int topo, int direita, int base);
/// The same on a given printer instead of the user's own.
void PrintRTF(const QPlainTextEdit& caixa, QPrinter& impressora, int esquerda, int topo, int direita,
              int base);

} // namespace tv::WindowsAPI
