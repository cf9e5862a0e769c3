#pragma once

#include "platform/RecordSet.h"
#include "windows/TempoDeProcessador.h"

#include <memory>
#include <string>

namespace tv::test {

/// An open record set with a text, a number, a whole number, a logical and a date: what grids show.
inline std::shared_ptr<RecordSet> registrosVazios() {
    auto registros = std::make_shared<RecordSet>();
    registros->Append("nome", ColumnType::FixedChar, 80);
    registros->Append("valor", ColumnType::Double, 8);
    registros->Append("grupo", ColumnType::Integer, 0);
    registros->Append("ativo", ColumnType::Boolean, 0);
    registros->Append("data", ColumnType::Date, 0);
    registros->Open();
    return registros;
}

inline void acrescenta(RecordSet& registros, const std::string& nome, int grupo = 0) {
    registros.AddNew();
    registros.set("nome", nome);
    registros.set("valor", 0.5 + grupo);
    registros.set("grupo", grupo);
    registros.Update();
}

/// `quantos` rows "linha 0", "linha 1", ... in the groups 0, 1 and 2 by turns.
inline std::shared_ptr<RecordSet> registros(int quantos) {
    auto novos = registrosVazios();
    for (int i = 0; i < quantos; ++i) {
        acrescenta(*novos, "linha " + std::to_string(i), i % 3);
    }
    return novos;
}

} // namespace tv::test
