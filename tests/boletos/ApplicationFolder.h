#pragma once

#include "boletos/Program.h"
#include "platform/ScratchFolder.h"

#include <nlohmann/json.hpp>

#include <string>
#include <string_view>
#include <vector>

namespace boletos::test {

/// The schema of the layouts below: fundo+ of header (cnpj, nome?) and titulo* (cod, valor).
inline constexpr std::string_view schema = R"(<?xml version="1.0" encoding="UTF-8"?>
<xs:schema xmlns:xs="http://www.w3.org/2001/XMLSchema" elementFormDefault="qualified">
 <xs:element name="posicao_1"><xs:complexType><xs:sequence>
  <xs:element name="fundo" maxOccurs="unbounded"><xs:complexType><xs:sequence>
   <xs:element name="header"><xs:complexType><xs:sequence>
    <xs:element name="cnpj" type="xs:string"/>
    <xs:element name="nome" type="xs:string" minOccurs="0"/>
   </xs:sequence></xs:complexType></xs:element>
   <xs:element name="titulo" minOccurs="0" maxOccurs="unbounded"><xs:complexType><xs:sequence>
    <xs:element name="cod" type="xs:string"/>
    <xs:element name="valor" type="xs:decimal"/>
   </xs:sequence></xs:complexType></xs:element>
  </xs:sequence></xs:complexType></xs:element>
 </xs:sequence></xs:complexType></xs:element>
</xs:schema>
)";

/// A formula that finds every titulo whose cod is "Z".
inline constexpr std::string_view formula = R"(<?xml version="1.0" encoding="UTF-8"?>
<xsl:stylesheet version="1.0" xmlns:xsl="http://www.w3.org/1999/XSL/Transform">
 <xsl:output method="xml" omit-xml-declaration="yes"/>
 <xsl:template match="/"><TORVA><xsl:for-each select="//titulo[cod='Z']">
  <RESULTADO lastElement="cod" TAGvalor="{cod}" path="posicao_1.fundo.titulo.cod" keyValor="{../header/cnpj}"
    errCode="-2147221503" strLabel="Regra" linha="7" coluna="9"><strDescription>Z não serve</strDescription></RESULTADO>
 </xsl:for-each></TORVA></xsl:template>
</xsl:stylesheet>
)";

/// A report page that counts the findings.
inline constexpr std::string_view reportStylesheet = R"xsl(<?xml version="1.0" encoding="UTF-8"?>
<xsl:stylesheet version="1.0" xmlns:xsl="http://www.w3.org/1999/XSL/Transform">
 <xsl:output method="html" encoding="UTF-8"/>
 <xsl:template match="/TORVA"><html><body><h1><xsl:value-of select="BOLETO/LAYOUT"/></h1>
  <p><xsl:value-of select="BOLETO/ARQUIVO"/></p><b><xsl:value-of select="count(RESULTADO)"/></b></body></html>
 </xsl:template>
</xsl:stylesheet>
)xsl";

/// A BOLETO element with the sections of the schema above.
inline std::string boleto(const std::string& tag, const std::string& validador,
                          const std::string& folhaFormula = "", const std::string& tramador = "SIM") {
    const auto campo = [](const std::string& nome, const std::string& titulo, bool chave, bool mandatorio) {
        return "<CAMPO tag='" + nome + "' campoChave='" + (chave ? "SIM" : "NAO") +
               "'><OBSERVACAO>Um campo</OBSERVACAO><DADO tipo='TEXTO' tamanho='20' mandatorio='" +
               (mandatorio ? "S" : "N") + "' validacao='' default=''/><COLUNA titulo='" + titulo +
               "' largura='1500' alinhamento='ESQUERDA' maskInput='' maskDisplay='' maskOutput='' "
               "tabela=''/></CAMPO>";
    };
    const auto secao = [](const std::string& nome, const std::string& titulo, const std::string& inside) {
        return "<SECAO tag='" + nome + "' nome='" + titulo +
               "' ocorrencia='*' secaoMestre='NAO' nomeGrupo='' tagGrupo=''>" + inside + "</SECAO>";
    };
    return "<BOLETO tag='" + tag + "' nome='Posi\u00E7\u00E3o' versao='1.0' validador='" + validador +
           "' formula='" + folhaFormula + "' tramador='" + tramador + "' nomeGrupo='' tagGrupo=''>" +
           secao(
               "fundo", "Fundos",
               secao("header", "Cabe\u00E7alho",
                     campo("cnpj", "CNPJ", true, true) + campo("nome", "Nome", false, false)) +
                   secao("titulo", "T\u00EDtulos",
                         campo("cod", "C\u00F3digo", false, true) + campo("valor", "Valor", false, false))) +
           "</BOLETO>";
}

inline std::string catalog(const std::string& boletos) {
    return "<?xml version='1.0' encoding='UTF-8'?><TORVA><app><titulo>Teste</titulo><versao>1</versao>"
           "<site><caption/><link/></site><email><caption/><link/></email><descricao/></app>"
           "<logger type='TXT' level='OFF'/><configuracao><TABELAS/></configuracao><BOLETOS>" +
           boletos + "</BOLETOS></TORVA>";
}

inline std::string document(const std::string& cnpj, const std::string& cod, const std::string& valor) {
    return "<posicao_1>\n<fundo>\n<header><cnpj>" + cnpj + "</cnpj></header>\n<titulo><cod>" + cod +
           "</cod><valor>" + valor + "</valor></titulo>\n</fundo>\n</posicao_1>\n";
}

/// An application folder of a test's own with these layouts, and the program called for it:
///   Posicao_1        checked by a schema alone
///   ComFormula       and by the formula
///   SemValidador     not checked at all
///   SemEsquema       whose schema is missing
///   EsquemaQuebrado  whose schema does not load
///   SemFormula       whose formula is missing
class BoletosTest : public ::testing::Test {
protected:
    BoletosTest() {
        std::filesystem::create_directories(folder / "app/XSD");
        folder.file("app/TORVA_TramadorValidador.xml",
                    catalog(boleto("Posicao_1", "posicao.xsd") +
                            boleto("ComFormula", "Posicao.xsd", "Formula.XSL", "NAO") +
                            boleto("SemValidador", " ") + boleto("SemEsquema", "nada.xsd") +
                            boleto("EsquemaQuebrado", "quebrado.xsd") +
                            boleto("SemFormula", "posicao.xsd", "nada.xsl")));
        folder.file("app/XSD/posicao.xsd", schema);
        folder.file("app/XSD/quebrado.xsd", "<xs:schema");
        folder.file("app/XSD/formula.xsl", formula);
        folder.file("app/XSD/resultado.xsl", reportStylesheet);
    }

    std::string app() const { return (folder / "app").string(); }
    /// Writes a document and gives its path.
    std::string write(const std::string& name, std::string_view bytes) const {
        std::filesystem::create_directories((folder / name).parent_path());
        return folder.file(name, bytes).string();
    }
    std::string valid(const std::string& name, const std::string& cnpj = "1") const {
        return write(name, document(cnpj, "A", "1.5"));
    }
    std::string invalid(const std::string& name, const std::string& cnpj = "1") const {
        return write(name, document(cnpj, "A", "x"));
    }

    /// `boletos validar` for the folder with these further arguments.
    std::vector<std::string> command(const std::string& layout, const std::vector<std::string>& rest) const {
        std::vector<std::string> all{"validar", "--pasta", app(), "--layout", layout};
        all.insert(all.end(), rest.begin(), rest.end());
        return all;
    }
    Outcome validar(const std::string& layout, const std::vector<std::string>& rest,
                    const Surroundings& surroundings = {}) const {
        return run(command(layout, rest), surroundings);
    }

    tv::test::ScratchFolder folder;
};

inline std::vector<std::string> linesOf(const std::string& text) {
    std::vector<std::string> lines;
    for (std::size_t from = 0; from < text.size();) {
        const std::size_t to = std::min(text.find('\n', from), text.size());
        lines.push_back(text.substr(from, to - from));
        from = to + 1;
    }
    return lines;
}

/// The objects of a report in JSON, a line each.
inline std::vector<nlohmann::json> jsonOf(const std::string& text) {
    std::vector<nlohmann::json> objects;
    for (const std::string& line : linesOf(text)) {
        objects.push_back(nlohmann::json::parse(line));
    }
    return objects;
}

} // namespace boletos::test
