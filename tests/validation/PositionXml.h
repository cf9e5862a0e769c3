#pragma once

#include "platform/XmlDocument.h"
#include "validation/RegrasEntreCampos.h"

#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace tv::test {

using Fields = std::vector<std::pair<std::string, std::string>>;

/// An element with one child a field; `inside` comes behind them.
inline std::string element(const std::string& tag, const Fields& fields, const std::string& inside = "") {
    std::string xml = "<" + tag + ">";
    for (const auto& [name, value] : fields) {
        xml += "<" + name + ">" + value + "</" + name + ">";
    }
    return xml + inside + "</" + tag + ">";
}

/// The header of a fund or a wallet. A test names the members that it is about; the others make no finding.
struct HeaderXml {
    std::string cnpj = "94000001000180";
    std::string valorativos = "0";
    std::string valorreceber = "0";
    std::string valorpagar = "0";
    std::string vlcotasemitir = "0";
    std::string vlcotasresgatar = "0";
    std::string valorcota = "0";
    std::string quantidade = "0";
    std::string patliq = "0";

    Fields fields() const {
        return {{"cnpj", cnpj},
                {"valorativos", valorativos},
                {"valorreceber", valorreceber},
                {"valorpagar", valorpagar},
                {"vlcotasemitir", vlcotasemitir},
                {"vlcotasresgatar", vlcotasresgatar},
                {"valorcota", valorcota},
                {"quantidade", quantidade},
                {"patliq", patliq}};
    }
    std::string xml() const { return element("header", fields()); }
    /// Without one of the fields.
    std::string without(std::string_view name) const {
        Fields left = fields();
        std::erase_if(left, [&](const auto& field) { return field.first == name; });
        return element("header", left);
    }
};

/// A header whose declared assets are `valorativos` and whose equity agrees with its formulas.
inline std::string headerWith(const std::string& valorativos) {
    return HeaderXml{
        .valorativos = valorativos, .valorcota = "1", .quantidade = valorativos, .patliq = valorativos}
        .xml();
}

inline std::string fundo(const std::string& inside) {
    return "<fundo>" + inside + "</fundo>";
}

/// A position document of the layout `tag`.
inline std::string posicao(const std::string& inside, const std::string& tag = "arquivoposicao_4_01") {
    return "<" + tag + ">" + inside + "</" + tag + ">";
}

/// The text that the rules across fields append for a document.
inline std::string fragmentsOf(const std::string& xml, std::string_view tag = "arquivoposicao_4_01") {
    XmlDocument document;
    std::string fragments;
    if (document.loadXML(xml)) {
        RegrasEntreCampos(fragments).verificaArquivo(document, tag);
        return fragments;
    }
    return "(the document does not load: " + document.parseError() + ")";
}

/// One finding read back from fragments.
struct Fragment {
    std::string lastElement;
    std::string valor;
    std::string path;
    std::string chave;
    std::string descricao;
    bool operator==(const Fragment&) const = default;
};

inline void PrintTo(const Fragment& fragment, std::ostream* out) {
    *out << fragment.lastElement << " | " << fragment.valor << " | " << fragment.path << " | "
         << fragment.chave << " | " << fragment.descricao;
}

/// The findings in fragments, in order. Their closing root tags are taken out as the reading does it.
inline std::vector<Fragment> readFragments(const std::string& fragments) {
    std::string xml = "<TORVA>" + fragments;
    for (std::size_t at = xml.find("</TORVA>"); at != std::string::npos; at = xml.find("</TORVA>")) {
        xml.erase(at, std::string_view("</TORVA>").size());
    }
    XmlDocument document;
    std::vector<Fragment> found;
    if (!document.loadXML(xml + "</TORVA>")) {
        return {{"(the fragments do not load)", fragments, "", "", document.parseError()}};
    }
    for (const XmlNode& item : document.selectNodes("/TORVA/RESULTADO")) {
        found.push_back({item.getNamedItem("lastElement"), item.getNamedItem("TAGvalor"),
                         item.getNamedItem("path"), item.getNamedItem("keyValor"),
                         item.child("strDescription").text()});
    }
    return found;
}

inline std::vector<Fragment> findingsOf(const std::string& xml,
                                        std::string_view tag = "arquivoposicao_4_01") {
    return readFragments(fragmentsOf(xml, tag));
}

} // namespace tv::test
