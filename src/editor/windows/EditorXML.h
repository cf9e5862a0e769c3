#pragma once

#include <cstdint>

class QPlainTextEdit;

namespace tv {
class PicLines;
}

/// What the editor asks its text box `txtXML` about lines, the drawing of line numbers and the switch of word
/// wrap. A line is a paragraph of the text, so that its number is the one that findings name, however the box
/// wraps. Lines and character positions count from 0.
///
/// Each question comes in two forms: for a given box, and for the `txtXML` of the main window's active child.
/// The latter ignores errors: while another kind of child is active, or none, it does nothing and gives 0.
namespace tv::EditorXML {

std::int32_t GetTotalLines();
std::int32_t GetTotalLines(const QPlainTextEdit& caixa);

std::int32_t GetFirstVisibleLine();
std::int32_t GetFirstVisibleLine(const QPlainTextEdit& caixa);

/// Line of a character. A position behind the text is on the last line; -1 stands for the start of the
/// selection.
std::int32_t GetCurrentLine(std::int32_t& indice);
std::int32_t GetCurrentLine(const QPlainTextEdit& caixa, std::int32_t indice);

/// Draws the numbers of the visible lines on the strip, those of the selected lines in the colour of window
/// text, the others in that of button shadows. Since the colour changes only at the first selected line and
/// behind the last one, a selection that begins above the first visible line is not told. Failures are
/// logged.
void DrawLines(PicLines& picLines);
void DrawLines(PicLines& picLines, const QPlainTextEdit& caixa);

/// Where long lines are wrapped.
enum class Quebra : std::int16_t {
    Nenhuma = 0,
    NaJanela = 1,
    NaPagina = 2, ///< At the width of the printer's page, or of the box where that is narrower.
};

void quebraLinhas(Quebra modo);
void quebraLinhas(QPlainTextEdit& caixa, Quebra modo);

} // namespace tv::EditorXML
