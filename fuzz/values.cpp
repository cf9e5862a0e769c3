// Values of fields: an element CAMPO in the first line, behind it one value a line. And the rules of texts
// and numbers that judge them.
#include "Target.h"

#include "composer/bloco.h"
#include "composer/entrada.h"
#include "model/LayoutXml.h"
#include "model/bibliotecaKVO.h"
#include "model/clsCampo.h"
#include "platform/Error.h"
#include "platform/text.h"

namespace {

template<typename Use>
void tolerant(Use&& use) {
    try {
        use();
    } catch (const tv::Error&) { // NOLINT(bugprone-empty-catch): refused, as it should be
    }
}

void readNumbers(std::string_view value) {
    tolerant([&] {
        const double number = tv::text::lenientNumber(value);
        static_cast<void>(tv::text::roundHalfEven(number, 2));
        static_cast<void>(tv::text::toInt32(number));
        static_cast<void>(tv::text::toInt16(number));
    });
    require(tv::text::isNumeric(value) == tv::text::documentNumber(value).has_value(),
            "a number reads as one");
    tolerant([&] { static_cast<void>(tv::text::parseInt32(value)); });
}

void convert(std::string_view value) {
    const std::string utf8 = tv::text::sanitizeUtf8(value);
    require(tv::text::isUtf8(utf8), "a text that was mended is UTF-8");
    require(!tv::text::isUtf8(value) || utf8 == value, "a sound text needs no mending");
    require(tv::text::toLatin1(tv::text::fromLatin1(value)) == value,
            "every byte is a character of ISO-8859-1");
    static_cast<void>(tv::text::toLatin1Markup(utf8));
    require(tv::text::upper(tv::text::lower(value)).size() >= tv::text::length(value),
            "no character is lost");
    static_cast<void>(tv::text::left(value, 3));
    static_cast<void>(tv::text::mid(value, 2, 4));
}

void judge(const tv::clsCampo& field, std::string_view value) {
    static_cast<void>(field.isValido(value));
    if (const auto typed = tv::entrada::le(field, value)) {
        static_cast<void>(tv::entrada::textoDeEdicao(field, *typed));
    }
    static_cast<void>(tv::entrada::digitavel(field, value));
}

void paste(std::string_view bytes) {
    const tv::bloco::Bloco cells = tv::bloco::le(bytes);
    const bool endsInNothing = !cells.empty() && cells.back() == std::vector<std::string>{""};
    require(endsInNothing || tv::bloco::le(tv::bloco::escreve(cells)) == cells,
            "copied cells paste as they were");
}

} // namespace

void readForeign(std::string_view bytes) {
    static const std::shared_ptr<const tv::Tabelas> tables = tv::test::tables();
    static const tv::Entradas& entries = tables->Item("titulos")->linha;
    paste(bytes);
    const std::string_view element = bytes.substr(0, bytes.find('\n'));
    tv::clsCampo field;
    tolerant([&] { field.setEstrutura(element, tables); });
    for (const std::string_view value : tv::text::split(bytes.substr(element.size()), '\n')) {
        static_cast<void>(tv::bibliotecaKVO::isData(value));
        static_cast<void>(tv::bibliotecaKVO::isCNPJ(value));
        static_cast<void>(tv::bibliotecaKVO::isValorTabela(&entries, value));
        readNumbers(value);
        convert(value);
        tolerant([&] { judge(field, value); });
    }
}
