#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace tv {

class XmlNode;

/// What a field's value is: type, size, whether it must be filled, and by which rule it is judged.
class clsDado {
public:
    /// Fills the description from the outer XML of a DADO element. Text that does not parse leaves it as it
    /// is. Throws Error 91 for a missing attribute.
    void setEstrutura(std::string_view EstruturaXML);
    /// The same from an element that is parsed already.
    void setEstrutura(XmlNode dado);

    /// Size as the catalog's text; a number of characters for text fields.
    const std::string& getTamanho() const noexcept { return tamanho_; }
    /// Data type code: 133 date, 129 text, 3 whole number, 5 number with decimals, 11 logical.
    std::int32_t getTipo() const noexcept { return tipo_; }
    /// Name of the rule, as the catalog writes it.
    const std::string& getValidacao() const noexcept { return validacao_; }
    const std::string& getValorDefault() const noexcept { return valorDefault_; }
    bool IsMandatorio() const noexcept { return mandatorio_; }

    void setMandatorio(bool mandatorio) noexcept { mandatorio_ = mandatorio; }
    void setTamanho(std::string tamanho) { tamanho_ = std::move(tamanho); }
    /// "DATA", "TEXTO", "INTEIRO", "DECIMAL" or "BOOLEAN" in any case; every other word means text.
    void setTipo(std::string_view tipo);
    void setValidacao(std::string validacao) { validacao_ = std::move(validacao); }
    void setValorDefault(std::string valor) { valorDefault_ = std::move(valor); }

private:
    std::int32_t tipo_ = 0;
    std::string tamanho_;
    bool mandatorio_ = false;
    std::string validacao_;
    std::string valorDefault_;
};

} // namespace tv
