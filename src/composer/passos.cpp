#include "composer/passos.h"

#include "composer/chavesArvore.h"
#include "platform/text.h"

namespace tv::passos {
namespace {

bool existe(const RecordSet& dados, std::size_t linha) {
    return dados.cell(linha, 0) != nullptr;
}

/// Writes the cells through a view of its own, so that no cursor or filter of a grid moves.
void escreve(const GradeSecao& grade, const std::vector<CelulaEditada>& celulas, bool depois,
             Efeito& efeito) {
    const std::unique_ptr<RecordSet> dados = grade.dados->Clone();
    for (const CelulaEditada& celula : celulas) {
        if (!existe(*dados, celula.linha)) {
            continue;
        }
        dados->MoveTo(celula.linha);
        dados->set(dados->columns()[celula.coluna].name, depois ? celula.depois : celula.antes);
        if (efeito.mudadas.empty() || efeito.mudadas.back() != celula.linha) {
            efeito.mudadas.push_back(celula.linha);
        }
    }
    dados->Update();
}

void devolve(Documento& documento, const PassoDeEdicao& passo, const std::vector<LinhaGuardada>& linhas,
             Efeito& efeito) {
    for (const LinhaGuardada& guardada : linhas) {
        RecordSet& dados = *documento.grade(guardada.chaveGrade).dados;
        if (existe(dados, guardada.linha)) {
            continue;
        }
        dados.Restore(guardada.linha, guardada.valores);
        if (guardada.chaveGrade == passo.chaveGrade) {
            efeito.devolvidas.push_back(guardada.linha);
        }
    }
}

/// Takes rows away and keeps what they hold.
void retira(Documento& documento, std::vector<LinhaGuardada>& linhas) {
    for (LinhaGuardada& guardada : linhas) {
        const std::unique_ptr<RecordSet> dados = documento.grade(guardada.chaveGrade).dados->Clone();
        if (existe(*dados, guardada.linha)) {
            guardada.valores = dados->values(guardada.linha);
            dados->MoveTo(guardada.linha);
            dados->Delete();
        }
    }
}

/// The funds of masters that were added go from the tree with them.
void retiraFundos(Documento& documento, const std::vector<LinhaGuardada>& linhas) {
    for (const LinhaGuardada& guardada : linhas) {
        const GradeSecao& grade = documento.grade(guardada.chaveGrade);
        if (!grade.secao->isSecaoMestre() || guardada.valores.empty()) {
            continue;
        }
        const Value& rowID = guardada.valores[grade.dados->columnIndex("rowID")];
        const auto* numero = std::get_if<std::int32_t>(&rowID);
        const NoArvore* no = numero == nullptr ? nullptr : documento.arvore.fundo(grade.chave, *numero);
        if (no != nullptr) {
            documento.arvore.remove(std::string(no->chave));
        }
    }
}

} // namespace

Efeito desfaz(Documento& documento, PassoDeEdicao& passo) {
    Efeito efeito;
    documento.estado.salvo = false;
    devolve(documento, passo, passo.removidas, efeito);
    escreve(documento.grade(passo.chaveGrade), passo.celulas, false, efeito);
    retira(documento, passo.incluidas);
    retiraFundos(documento, passo.incluidas);
    return efeito;
}

Efeito refaz(Documento& documento, PassoDeEdicao& passo) {
    Efeito efeito;
    documento.estado.salvo = false;
    devolve(documento, passo, passo.incluidas, efeito);
    escreve(documento.grade(passo.chaveGrade), passo.celulas, true, efeito);
    retira(documento, passo.removidas);
    return efeito;
}

} // namespace tv::passos
