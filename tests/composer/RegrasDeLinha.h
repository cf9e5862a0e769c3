#pragma once

#include "Layouts.h"
#include "composer/RegrasLinha.h"
#include "composer/fundos.h"

#include <gtest/gtest.h>

#include <string>
#include <string_view>
#include <vector>

namespace tv::test {

inline constexpr const char* cnpj = "94000001000180";
inline constexpr const char* outroCnpj = "94000031000196";

/// A document whose rows come and go as a user makes them.
class RegrasDeLinha : public testing::Test {
protected:
    void abre(std::shared_ptr<const clsBoleto> layout) { documento.abrir(std::move(layout)); }
    GradeSecao& grade(std::string_view chave) const { return documento.grade(chave); }
    void clica(std::string_view chave) {
        documento.arvore.seleciona(chave);
        fundos::treeFundos_Click(documento);
    }
    /// A row typed in and committed, as a user does it.
    std::size_t digita(GradeSecao& alvo, std::string_view coluna, const Value& valor) {
        const auto nova = regras.addRow(alvo, std::nullopt);
        EXPECT_TRUE(nova.linha) << alvo.chave;
        alvo.dados->set(coluna, valor);
        alvo.dados->Update();
        mensagem = regras.grid_AfterRowUpdate(alvo, *nova.linha).mensagem;
        return *nova.linha;
    }
    Value celula(const GradeSecao& alvo, std::size_t linha, std::string_view coluna) const {
        return *alvo.dados->cell(linha, alvo.dados->columnIndex(coluna));
    }
    void apaga(GradeSecao& alvo, std::size_t linha) {
        regras.grid_BeforeRowsDeleted(alvo, {linha});
        alvo.dados->MoveTo(linha);
        alvo.dados->Delete();
        refeitas = regras.grid_AfterRowsDeleted(alvo);
    }
    std::size_t linhas(std::string_view chave) const { return grade(chave).dados->Clone()->RecordCount(); }

    Documento documento;
    RegrasLinha regras{documento};
    std::string mensagem;
    std::vector<GradeSecao*> refeitas;
};

} // namespace tv::test
