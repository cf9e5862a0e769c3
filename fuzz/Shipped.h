#pragma once

#include "app/clsTramadorValidador.h"

#include <memory>
#include <string_view>

namespace fuzz {

/// The shipped folder of catalog, schemas and samples.
inline constexpr std::string_view data = TV_SOURCE_DIR "/data";

/// The shipped catalog, loaded once.
inline const tv::clsTramadorValidador& catalog() {
    static const auto loaded = [] {
        auto made = std::make_unique<tv::clsTramadorValidador>();
        made->load(std::string(data), "TORVA_TramadorValidador.xml");
        return made;
    }();
    return *loaded;
}

/// The layout whose tag a document names first, otherwise the newest one of positions.
inline const std::shared_ptr<const tv::clsBoleto>& layoutOf(std::string_view document) {
    const std::shared_ptr<const tv::clsBoleto>* first = catalog().getBoletos().find("arquivoposicao_4_01");
    std::size_t firstAt = std::string_view::npos;
    for (const auto& layout : catalog().getBoletos()) {
        if (const std::size_t at = document.find("<" + layout->getTag()); at < firstAt) {
            firstAt = at;
            first = &layout;
        }
    }
    return *first;
}

} // namespace fuzz
