#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace tv {

class XmlNode;

/// How a field shows in a grid: title, width, alignment, masks and value table.
class clsColuna {
public:
    /// Fills the description from the outer XML of a COLUNA element. Text that does not parse leaves it as it
    /// is. Throws Error 91 for a missing attribute, Error 13 when `largura` is no number, Error 6 when it is
    /// too big.
    void setEstrutura(std::string_view EstruturaXML);
    /// The same from an element that is parsed already.
    void setEstrutura(XmlNode coluna);

    /// True when a table is named. Blanks count as a name.
    bool hasTabela() const noexcept { return !tabela_.empty(); }

    const std::string& getTitulo() const noexcept { return titulo_; }
    /// 1 left, 2 centre, 3 right, 0 for none.
    std::int16_t getAlinhamento() const noexcept { return alinhamento_; }
    /// Width in twips.
    std::int32_t getLargura() const noexcept { return largura_; }
    const std::string& getMaskDisplay() const noexcept { return maskDisplay_; }
    const std::string& getMaskInput() const noexcept { return maskInput_; }
    /// Pattern in which a value is written to a document.
    const std::string& getMaskOutput() const noexcept { return maskOutput_; }
    /// Key of a table of the catalog, or empty.
    const std::string& getTabela() const noexcept { return tabela_; }

    void setTitulo(std::string titulo) { titulo_ = std::move(titulo); }
    /// "ESQUERDA", "CENTRO" or "DIREITA" in any case; every other word means none.
    void setAlinhamento(std::string_view alinhamento);
    void setLargura(std::int32_t largura) noexcept { largura_ = largura; }
    void setMaskDisplay(std::string mask) { maskDisplay_ = std::move(mask); }
    void setMaskInput(std::string mask) { maskInput_ = std::move(mask); }
    void setMaskOutput(std::string mask) { maskOutput_ = std::move(mask); }
    void setTabela(std::string tabela) { tabela_ = std::move(tabela); }

private:
    std::string titulo_;
    std::int32_t largura_ = 0;
    std::int16_t alinhamento_ = 0;
    std::string maskInput_;
    std::string maskDisplay_;
    std::string maskOutput_;
    std::string tabela_;
};

} // namespace tv
