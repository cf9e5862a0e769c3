#pragma once

#include "platform/XmlDocument.h"

#include <array>
#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace tv {

/// Rules across the fields of a position document: the declared value of the assets against the sum of the
/// asset sections, the equity against its formulas, and the class of an operation against that of its
/// commitment.
///
/// All of it in 64-bit floating point with the fixed tolerance 500.0; a difference of exactly 500.0 passes.
/// Findings come as RESULTADO fragments that go behind the output of the formula stylesheet. A `fundo` or
/// `carteira` with a field that is missing or is no number is left out, and its failure goes to the log.
class RegrasEntreCampos {
public:
    /// `fragmentos` receives the findings; it is appended to.
    explicit RegrasEntreCampos(std::string& fragmentos) noexcept
        : fragmentos_(fragmentos) {}

    /// Checks every child of the root `tag`. Layouts whose tag holds neither "4_01" nor "4_00", in any case,
    /// have no such rules. An empty document gives no finding.
    void verificaArquivo(const XmlDocument& documento, std::string_view tag);

private:
    static constexpr std::size_t secoes = 18;
    using Somas = std::array<double, secoes>;
    struct Totais {
        double valorativos = 0;
        std::string chave;
        Somas somas{};
        double total = 0;
    };

    void verificaAtivos(const XmlNode& no, const std::string& tipo);
    void soma(const XmlNode& filho, std::string_view nome, Totais& totais) const;
    static double ajustaClasseOperacao(const XmlNode& no, double valor, bool& ignorar);
    static std::string montaTotais(const Totais& totais, std::string_view tipo);

    void verificaOperacoes(const std::vector<XmlNode>& filhos, const std::string& tipo,
                           const std::string& chave);
    void verificaClasse(const XmlNode& no, const std::string& secao, const std::string& tipo,
                        const std::string& chave);
    void verificaPatrimonio(const XmlNode& header, const std::string& tipo, const std::string& chave);
    static std::string getClasseCompromisso(const XmlNode& no, std::string_view classeoperacao);
    void montaResultado(std::string_view tipo, std::string_view valor, std::string_view descricao,
                        std::string_view secao, std::string_view campo, std::string_view chave);

    std::string& fragmentos_;
};

} // namespace tv
