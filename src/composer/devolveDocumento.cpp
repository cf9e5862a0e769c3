#include "composer/RetratoDocumento.h"
#include "composer/retratoEstado.h"
#include "platform/ByteStream.h"
#include "platform/Error.h"

#include <optional>
#include <utility>

/// The way of a snapshot's bytes back into a document.
namespace tv {

namespace {

/// One section of the snapshot and the record set that takes its rows.
struct SecaoLida {
    std::string chave;
    std::size_t pendente = 0; ///< One more than the number that the row under way had; 0 without one.
    std::size_t linhas = 0;
    std::shared_ptr<RecordSet> dados; ///< Null where the layout has no such section any more.
    /// For each column of the snapshot its name here; nothing where the layout has none like it.
    std::vector<std::optional<std::string>> colunas;
};

std::optional<std::string> colunaIgual(const RecordSet* dados, std::string_view nome, std::uint64_t tipo) {
    if (dados != nullptr) {
        for (const Column& coluna : dados->columns()) {
            if (coluna.name == nome && static_cast<std::uint64_t>(coluna.type) == tipo) {
                return coluna.name;
            }
        }
    }
    return std::nullopt;
}

SecaoLida leSecao(ByteReader& bytes, const Documento& documento, std::size_t& perdidas) {
    SecaoLida secao;
    secao.chave = bytes.text();
    secao.pendente = static_cast<std::size_t>(bytes.number());
    secao.linhas = static_cast<std::size_t>(bytes.number());
    const std::shared_ptr<GradeSecao>* grade = documento.grids().find(secao.chave);
    secao.dados = grade == nullptr ? nullptr : (*grade)->dados;
    for (std::size_t colunas = bytes.count(); colunas > 0; --colunas) {
        const std::string_view nome = bytes.text();
        secao.colunas.push_back(colunaIgual(secao.dados.get(), nome, bytes.number()));
        perdidas += secao.linhas > 0 && !secao.colunas.back() ? 1U : 0U;
    }
    return secao;
}

void leLinha(ByteReader& bytes, const SecaoLida& secao, RetratoDocumento::Volta& volta) {
    const std::uint64_t numero = bytes.number();
    if (secao.dados) {
        secao.dados->AddNew();
        if (numero + 1 == secao.pendente) {
            volta.pendentes[secao.chave] = secao.dados->currentRow();
        }
    }
    for (const std::optional<std::string>& coluna : secao.colunas) {
        Value valor = bytes.value();
        if (coluna && !isNull(valor)) {
            secao.dados->set(*coluna, std::move(valor));
        }
    }
}

} // namespace

RetratoDocumento::Volta devolveDocumento(Documento& documento, std::string_view conteudo) {
    ByteReader bytes(conteudo);
    RetratoDocumento::Volta volta = retratoEstado::le(bytes, documento);
    std::vector<SecaoLida> secoes;
    for (std::size_t quantas = bytes.count(); quantas > 0; --quantas) {
        secoes.push_back(leSecao(bytes, documento, volta.perdidas));
    }
    for (const SecaoLida& secao : secoes) {
        for (std::size_t linha = 0; linha < secao.linhas; ++linha) {
            leLinha(bytes, secao, volta);
        }
        if (secao.dados) {
            secao.dados->Update();
        }
    }
    if (!bytes.atEnd()) {
        throw Error(errc::invalidCall, "RetratoDocumento", "Os dados guardados estão danificados");
    }
    documento.estado.arquivo = volta.estado.arquivo;
    documento.estado.ultimoRowID = volta.estado.ultimoRowID;
    documento.estado.abrindo = volta.estado.abrindo;
    documento.estado.salvo = false;
    return volta;
}

} // namespace tv
