#pragma once

#include "app/clsTramadorValidador.h"
#include "model/clsCampo.h"
#include "model/clsSecao.h"

#include <gtest/gtest.h>

#include <functional>
#include <memory>
#include <string>

namespace tv::test {

/// The catalog as it ships, loaded once for all tests that walk it.
inline const clsTramadorValidador& shippedCatalog() {
    static const auto catalog = [] {
        auto loaded = std::make_unique<clsTramadorValidador>();
        EXPECT_TRUE(loaded->load(TV_SOURCE_DIR "/data", "TORVA_TramadorValidador.xml"))
            << loaded->lastReason();
        return loaded;
    }();
    return *catalog;
}

/// Calls `visit` with every section below `owner`, its owner, and a path for messages.
inline void
walkSections(const SectionOwner& owner, const std::string& path,
             const std::function<void(const SectionOwner&, const clsSecao&, const std::string&)>& visit) {
    for (const auto& section : owner.getSecoes()) {
        const std::string here = path + "." + section->getTag();
        visit(owner, *section, here);
        walkSections(*section, here, visit);
    }
}

/// Calls `visit` with every section of every layout of the shipped catalog.
inline void
walkCatalog(const std::function<void(const SectionOwner&, const clsSecao&, const std::string&)>& visit) {
    for (const auto& layout : shippedCatalog().getBoletos()) {
        walkSections(*layout, layout->getTag(), visit);
    }
}

/// Calls `visit` with every field of the shipped catalog and a path for messages.
inline void walkFields(const std::function<void(const clsCampo&, const std::string&)>& visit) {
    walkCatalog([&](const SectionOwner&, const clsSecao& section, const std::string& path) {
        for (const auto& field : section.getCampos()) {
            visit(*field, path + "." + field->getTag());
        }
    });
}

} // namespace tv::test
