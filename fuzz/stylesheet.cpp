// A layout's formula: bytes with the name space of stylesheets are the stylesheet, all others are what a
// stylesheet gives, which the validator reads.
#include "Scratch.h"
#include "Target.h"

#include "model/LayoutXml.h"
#include "platform/Error.h"
#include "platform/XmlTransform.h"
#include "platform/text.h"
#include "validation/clsValidador.h"

namespace {

constexpr std::string_view document =
    "<posicao_4_01><fundo><cnpj>33000167000101</cnpj><valor>12.5</valor></fundo>"
    "<fundo><cnpj>00000000000191</cnpj><valor>-3</valor></fundo></posicao_4_01>";
constexpr std::string_view schema = R"(<xs:schema xmlns:xs="http://www.w3.org/2001/XMLSchema">
    <xs:element name="posicao_4_01"><xs:complexType><xs:sequence><xs:any processContents="skip"
        minOccurs="0" maxOccurs="unbounded"/></xs:sequence></xs:complexType></xs:element></xs:schema>)";

/// A stylesheet whose output is that text; a CDATA section cannot hold its own end.
std::string giving(std::string_view output) {
    return "<xsl:stylesheet version='1.0' xmlns:xsl='http://www.w3.org/1999/XSL/Transform'>"
           "<xsl:output method='text'/><xsl:template match='/'><xsl:text><![CDATA[" +
           tv::text::replaceAll(tv::text::sanitizeUtf8(output), "]]>", "]]]]><![CDATA[>") +
           "]]></xsl:text></xsl:template></xsl:stylesheet>";
}

std::shared_ptr<const tv::clsBoleto> layoutIn(const fuzz::Scratch& folder) {
    folder.write("XSD/posicao.xsd", schema);
    folder.write("XSD/formula.xsl", "");
    const tv::test::BoletoXml xml{
        .tag = "posicao_4_01", .validador = "posicao.xsd", .formula = "formula.xsl"};
    auto layout = std::make_shared<tv::clsBoleto>();
    layout->setEstrutura(xml.xml(), tv::test::tables(), folder.text());
    return layout;
}

} // namespace

void readForeign(std::string_view bytes) {
    static const fuzz::Scratch folder;
    static const std::shared_ptr<const tv::clsBoleto> layout = layoutIn(folder);
    static const std::filesystem::path file = folder.write("documento.xml", document);
    const bool isStylesheet = tv::text::contains(bytes, "http://www.w3.org/1999/XSL/Transform");
    folder.write("XSD/formula.xsl", isStylesheet ? std::string(bytes) : giving(bytes));
    tv::XmlTransform::clearStore();
    tv::clsValidador validator(tv::clsValidador::Estagios::UmAposOutro);
    const bool isValid = validator.isValido(file, layout);
    require(isValid == validator.getResultado()->empty(), "a valid document has no findings");
    for (const tv::clsResultado& finding : *validator.getResultado()) {
        static_cast<void>(finding.getXML());
    }
}
