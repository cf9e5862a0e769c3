#pragma once

#include "logging/LogFolder.h"
#include "model/LayoutXml.h"
#include "validation/clsValidador.h"

#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace tv::test {

/// Line and column, from 1 and in characters, of the `which`-th occurrence of `what` in a text in UTF-8, in
/// the form "line:column".
inline std::string placeOf(std::string_view document, std::string_view what, int which = 1) {
    std::size_t at = document.find(what);
    for (int i = 1; i < which; ++i) {
        at = document.find(what, at + 1);
    }
    if (at == std::string_view::npos) {
        return "(not there)";
    }
    int line = 1;
    int column = 1;
    for (const char c : document.substr(0, at)) {
        if (c == '\n') {
            ++line;
            column = 1;
        } else if ((static_cast<unsigned char>(c) & 0xC0U) != 0x80U) {
            ++column;
        }
    }
    return std::to_string(line) + ":" + std::to_string(column);
}

/// The place right behind `what`.
inline std::string placeBehind(std::string_view document, const std::string& what) {
    return placeOf(std::string(document.substr(0, document.find(what) + what.size())) + "\1", "\1");
}

/// A finding as "code line:column path [value]".
inline std::string summary(const clsResultado& r) {
    return r.ErrorCode() + " " + std::to_string(r.linha()) + ":" + std::to_string(r.coluna()) + " " +
           r.TAGpath() + " [" + r.TAGvalue() + "]";
}

using Lines = std::vector<std::string>;

inline Lines summaries(const Resultados& resultados) {
    Lines lines;
    for (const clsResultado& resultado : resultados) {
        lines.push_back(summary(resultado));
    }
    return lines;
}

inline Lines codes(const Resultados& resultados) {
    Lines lines;
    for (const clsResultado& resultado : resultados) {
        lines.push_back(resultado.ErrorCode());
    }
    return lines;
}

/// A stylesheet whose template for the document is `body`.
inline std::string stylesheet(const std::string& body, const std::string& method = "xml") {
    return "<xsl:stylesheet version='1.0' xmlns:xsl='http://www.w3.org/1999/XSL/Transform'>"
           "<xsl:output method='" +
           method + "' omit-xml-declaration='yes'/><xsl:template match='/'>" + body +
           "</xsl:template></xsl:stylesheet>";
}

/// The schema of the layout `posicao` below.
///   fundo+    header   cnpj, dt (eight digits), nome?
///             titulo*  cod, valor (a number), compromisso? (dtretorno?, classecomp?), classe?
inline const std::string& positionSchema() {
    static const std::string schema = R"(<?xml version="1.0" encoding="UTF-8"?>
<xs:schema xmlns:xs="http://www.w3.org/2001/XMLSchema" elementFormDefault="qualified">
 <xs:simpleType name="Data"><xs:restriction base="xs:string"><xs:pattern value="[0-9]{8}"/></xs:restriction></xs:simpleType>
 <xs:element name="posicao"><xs:complexType><xs:sequence>
  <xs:element name="fundo" maxOccurs="unbounded"><xs:complexType><xs:sequence>
   <xs:element name="header"><xs:complexType><xs:sequence>
    <xs:element name="cnpj" type="xs:string"/>
    <xs:element name="dt" type="Data"/>
    <xs:element name="nome" type="xs:string" minOccurs="0"/>
   </xs:sequence></xs:complexType></xs:element>
   <xs:element name="titulo" minOccurs="0" maxOccurs="unbounded"><xs:complexType><xs:sequence>
    <xs:element name="cod" type="xs:string"/>
    <xs:element name="valor" type="xs:decimal"/>
    <xs:element name="compromisso" minOccurs="0"><xs:complexType><xs:sequence>
     <xs:element name="dtretorno" type="xs:string" minOccurs="0"/>
     <xs:element name="classecomp" type="xs:string" minOccurs="0"/>
    </xs:sequence></xs:complexType></xs:element>
    <xs:element name="classe" type="xs:string" minOccurs="0"/>
   </xs:sequence></xs:complexType></xs:element>
  </xs:sequence></xs:complexType></xs:element>
 </xs:sequence></xs:complexType></xs:element>
</xs:schema>
)";
    return schema;
}

/// The layout of that schema. cnpj is the key; cod must stand in the table "titulos", dt and dtretorno must
/// be dates, classe must be filled.
inline BoletoXml positionLayout() {
    const std::string header =
        SecaoXml{.tag = "header",
                 .inside =
                     CampoXml{.tag = "cnpj", .campoChave = "SIM", .titulo = "CNPJ"}.xml() +
                     CampoXml{.tag = "dt", .mandatorio = "S", .validacao = "DATA", .titulo = "Data"}.xml() +
                     CampoXml{.tag = "nome", .titulo = "Nome"}.xml(),
                 .nome = "Cabeçalho"}
            .xml();
    const std::string titulo =
        SecaoXml{
            .tag = "titulo",
            .inside =
                CampoXml{.tag = "cod", .mandatorio = "S", .titulo = "Código", .tabela = "titulos"}.xml() +
                CampoXml{.tag = "valor", .titulo = "Valor"}.xml() +
                CampoXml{.tag = "dtretorno", .validacao = "DATA", .titulo = "Retorno"}.xml() +
                CampoXml{.tag = "classecomp", .titulo = "Classe do compromisso"}.xml() +
                CampoXml{.tag = "classe", .mandatorio = "S", .titulo = "Classe"}.xml(),
            .nome = "Títulos"}
            .xml();
    return {.tag = "posicao",
            .inside = SecaoXml{.tag = "fundo", .inside = header + titulo, .nome = "Fundos"}.xml(),
            .nome = "Posição",
            .validador = "posicao.xsd"};
}

/// An application folder of its own with documents, schemas and stylesheets, and layouts that lie in it.
class ValidationFolder {
public:
    ValidationFolder() { writeXsd("posicao.xsd", positionSchema()); }

    std::filesystem::path path() const { return folder_.path(); }
    const TemporaryFolder& folder() const { return folder_; }
    std::filesystem::path write(std::string_view name, std::string_view bytes) const {
        return folder_.write(name, bytes);
    }
    std::filesystem::path writeXsd(const std::string& name, std::string_view bytes) const {
        return folder_.write("XSD/" + name, bytes);
    }
    std::shared_ptr<const clsBoleto> layout(const BoletoXml& xml) const {
        auto boleto = std::make_shared<clsBoleto>();
        boleto->setEstrutura(xml.xml(), tables(), folder_.text());
        return boleto;
    }
    /// The layout `posicao`; with a stylesheet's text, that is its formula.
    std::shared_ptr<const clsBoleto> posicao(const std::string& formula = "") const {
        BoletoXml xml = positionLayout();
        if (!formula.empty()) {
            writeXsd("formula.xsl", formula);
            xml.formula = "formula.xsl";
        }
        return layout(xml);
    }

private:
    TemporaryFolder folder_;
};

} // namespace tv::test
