// A file in the editor: its encoding is found out, its text broken into lines, changed, undone, brought into
// the parser's form, and written back without loss.
#include "Target.h"

#include "editor/CodificacaoXML.h"
#include "editor/PilhaDesfazer.h"
#include "editor/QuebraLinhas.h"
#include "platform/XmlDocument.h"
#include "platform/XmlForm.h"
#include "platform/text.h"

#include <string>

namespace {

std::u16string withoutBreaks(std::u16string text) {
    std::erase(text, u'\n');
    return text;
}

void breakLines(const std::u16string& text) {
    tv::QuebraLinhas lines(40);
    const std::u16string broken = lines.quebra(text);
    require(withoutBreaks(broken) == withoutBreaks(text), "line breaks change nothing else");
    static_cast<void>(lines.lugar({.linha = 1, .coluna = static_cast<std::int32_t>(text.size() / 2)}));
}

/// Takes the second half of the text out, puts it in front, and goes back to the first state.
void editAndUndo(const std::u16string& text) {
    const std::size_t half = text.size() / 2;
    tv::PilhaDesfazer states;
    states.inicia(tv::Texto(text));
    states.registra({half, text.size() - half, u""}, tv::PilhaDesfazer::Instante(0));
    states.registra({0, 0, text.substr(half)}, tv::PilhaDesfazer::Instante(5000));
    while (states.undoStack.size() > 1) {
        static_cast<void>(states.passoUndo());
        states.desfeito();
    }
    require(states.undoStack.back().Text.inteiro() == text, "the first state is the text as it was");
}

void bringIntoForm(const std::u16string& text) {
    std::string utf8;
    tv::text::appendUtf8(utf8, text.data(), text.size());
    if (const std::optional<std::string> form = tv::inParsersForm(utf8)) {
        require(tv::inParsersForm(*form) == form, "the parser's form stays the same");
        tv::XmlDocument before;
        tv::XmlDocument after;
        require(before.loadXML(utf8) == after.loadXML(*form),
                "the parser's form is a document when the text is");
        require(before.empty() || before.xml() == after.xml(), "the parser's form is the same document");
    }
}

} // namespace

void readForeign(std::string_view bytes) {
    const tv::TextoLido read = tv::leTexto(bytes);
    breakLines(read.texto);
    editAndUndo(read.texto);
    bringIntoForm(read.texto);
    const tv::CodificacaoXML form = tv::codificacaoParaGravar(read.texto, read.codificacao);
    const tv::TextoGravado written = tv::gravaTexto(read.texto, form);
    if (read.ilegiveis > 0) {
        return;
    }
    require(written.ausentes == 0, "an encoding has every character that was read in it");
    const tv::TextoLido again = tv::leTexto(written.bytes);
    require(again.texto == read.texto, "a text that was written is the same");
    require(again.codificacao.nome == read.codificacao.nome, "a text keeps its encoding");
}
