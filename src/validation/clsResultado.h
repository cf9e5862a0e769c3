#pragma once

#include "model/clsBoleto.h"
#include "validation/TextoAcumulado.h"

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>

namespace tv {

/// One finding of a validation: what is wrong, where in the file, in which field of which section, for which
/// fund.
class clsResultado {
public:
    /// Kinds of finding.
    enum Tipo : std::int16_t { nenhum = 0, dominio = 1, estrutura = 2, desconhecido = 4 };

    /// Codes with a wording of their own.
    static constexpr std::int32_t codigoEntreCampos = -2147221503; ///< 80040001: rules across fields.
    static constexpr std::int32_t codigoRegraCampo = -2147221502; ///< 80040002: the layout's rule of a field.

    std::int16_t TipoResultado() const noexcept { return tipo_; }
    /// The code in upper-case hexadecimal digits without a prefix; 8 digits for a negative code.
    const std::string& ErrorCode() const noexcept { return errorCode_; }
    const std::string& Titulo() const noexcept { return titulo_; }
    const std::string& Descricao() const noexcept { return descricao_; }
    /// Line and column in the file; -1 until setLocation.
    std::int32_t linha() const noexcept { return linha_; }
    std::int32_t coluna() const noexcept { return coluna_; }
    /// Display name of the node on which it was found, or the name that a rule across fields gave.
    const std::string& TAGname() const noexcept { return tagName_; }
    const std::string& TAGvalue() const noexcept { return tagValue_; }
    /// Dotted path of tags from the root.
    const std::string& TAGpath() const noexcept { return tagPath_; }
    /// Text of the key fields read so far, which identifies the fund.
    std::string ValorCampoChave() const { return std::string(chave_.texto()); }

    /// Sets code, kind, title and description; codes with a wording of their own replace the texts given.
    void setError(std::int32_t codigo, std::string_view titulo, std::string_view descricao);
    void setLocation(std::int32_t linha, std::int32_t coluna) noexcept;
    void setTag(std::string nome, std::string valor, std::string path, TextoAcumulado::Momento chave);
    void setTag(std::string nome, std::string valor, std::string path, std::string_view chave);
    /// Moves a key taken from `parte` to where that text stands in `inteiro`, behind `antes` bytes.
    void continuaChave(const TextoAcumulado& parte, const TextoAcumulado& inteiro, std::size_t antes);
    void SetBoleto(std::shared_ptr<const clsBoleto> boleto) noexcept { boleto_ = std::move(boleto); }
    const std::shared_ptr<const clsBoleto>& getBoleto() const noexcept { return boleto_; }

    bool isDominio() const noexcept { return tipo_ == dominio; }
    const std::string& getValor() const noexcept { return tagValue_; }
    std::string getFundo() const { return ValorCampoChave(); }
    /// Display name of the finding's section by its path; empty where the layout has no such section.
    std::string getSecao() const;
    /// Display name of the finding's field by its path; empty where the layout has no such field. Throws
    /// Error 9 for an empty path.
    std::string getCampo() const;
    /// What the attribute `fundo` of LOCAL shows: the key text, for a wallet its code of at most 14
    /// characters.
    std::string getFundoLocal() const;
    /// The first token of a path that is "fundo" or "carteira", or the empty text.
    static std::string getTipoPosicao(std::string_view path);
    /// First token of a key text, trimmed, upper case, 14 characters at most.
    static std::string getCodigoFundo(std::string_view chave);

    /// "NULL", "DOMINIO", "ESTRUTURA" or "DESCONHECIDO"; empty for any other kind.
    std::string_view nomeTipo() const noexcept;
    /// The finding as a RESULTADO element in one line; the empty text when its path is empty.
    std::string getXML() const;

private:
    std::string montaXML() const;

    std::int16_t tipo_ = nenhum;
    std::string errorCode_;
    std::string titulo_;
    std::string descricao_;
    std::int32_t linha_ = -1;
    std::int32_t coluna_ = -1;
    std::string tagName_;
    std::string tagValue_;
    std::string tagPath_;
    TextoAcumulado::Momento chave_;
    std::shared_ptr<const clsBoleto> boleto_;
};

} // namespace tv
