#include "composer/RetratoDocumento.h"

#include "composer/retratoEstado.h"
#include "platform/ByteStream.h"
#include "platform/Error.h"

#include <algorithm>
#include <utility>

namespace tv {

namespace {

constexpr std::size_t linhasDoBloco = 256;

} // namespace

/// The bytes of one section's rows.
struct RetratoDocumento::Secao {
    struct Bloco {
        std::shared_ptr<const std::string> bytes;
        std::size_t linhas = 0;
        bool temNovas = false; ///< Rows not ended yet, whose edits nobody tells.
        bool sujo = false;
    };

    ~Secao() { solta(); }
    void solta() noexcept {
        if (dados) {
            dados->unsubscribe(assinatura);
            dados.reset();
        }
        blocos.clear();
        sujos.clear();
    }
    void suja(std::size_t bloco) {
        if (bloco >= blocos.size()) {
            blocos.resize(bloco + 1);
        }
        if (!std::exchange(blocos[bloco].sujo, true)) {
            sujos.push_back(bloco);
        }
    }

    std::string chave;
    std::shared_ptr<RecordSet> dados;
    std::size_t assinatura = 0;
    std::vector<Bloco> blocos;
    std::vector<std::size_t> sujos;
};

RetratoDocumento::RetratoDocumento(const Documento& documento)
    : documento_(documento) {}

RetratoDocumento::~RetratoDocumento() = default;

void RetratoDocumento::solta() noexcept {
    secoes_.clear();
}

void RetratoDocumento::marcaSalvo() {
    acompanha();
    salva_ = versao_;
}

bool RetratoDocumento::mudou() {
    acompanha();
    return versao_ != salva_;
}

/// A load and a new document bring other record sets.
void RetratoDocumento::acompanha() {
    const Grades& grades = documento_.grids();
    if (secoes_.size() != grades.Count()) {
        secoes_.clear();
        for (std::size_t i = 0; i < grades.Count(); ++i) {
            secoes_.push_back(std::make_unique<Secao>());
        }
    }
    auto secao = secoes_.begin();
    for (const std::shared_ptr<GradeSecao>& grade : grades) {
        if ((*secao)->dados != grade->dados) {
            (*secao)->solta();
            (*secao)->chave = grade->chave;
            (*secao)->dados = grade->dados;
            vincula(**secao);
        }
        ++secao;
    }
}

void RetratoDocumento::vincula(Secao& secao) {
    ++versao_;
    secao.assinatura = secao.dados->subscribe([this, &secao](const RecordSet::Change& mudanca) {
        ++versao_;
        secao.suja(mudanca.row / linhasDoBloco);
    });
    for (std::size_t linha = 0; linha < secao.dados->rowLimit(); linha += linhasDoBloco) {
        secao.suja(linha / linhasDoBloco);
    }
}

bool RetratoDocumento::atualiza(const std::function<bool()>& continua) {
    acompanha();
    for (const auto& secao : secoes_) {
        for (std::size_t bloco = 0; bloco < secao->blocos.size(); ++bloco) {
            if (secao->blocos[bloco].temNovas) {
                secao->suja(bloco);
            }
        }
        while (!secao->sujos.empty()) {
            const std::size_t bloco = secao->sujos.back();
            secao->sujos.pop_back();
            if (refaz(*secao, bloco)) {
                ++versao_;
            }
            if (!continua()) {
                return false;
            }
        }
    }
    return true;
}

/// Makes a block's bytes anew. True when edits of new rows came to light.
bool RetratoDocumento::refaz(Secao& secao, std::size_t bloco) {
    Secao::Bloco& este = secao.blocos[bloco];
    const RecordSet& dados = *secao.dados;
    const std::size_t colunas = dados.columns().size();
    const std::size_t fim = std::min((bloco + 1) * linhasDoBloco, dados.rowLimit());
    const bool tinhaNovas = std::exchange(este.temNovas, false);
    ByteWriter bytes;
    este.linhas = 0;
    este.sujo = false;
    for (std::size_t linha = bloco * linhasDoBloco; linha < fim; ++linha) {
        if (dados.cell(linha, 0) == nullptr) {
            continue;
        }
        bytes.number(linha);
        for (std::size_t coluna = 0; coluna < colunas; ++coluna) {
            bytes.value(*dados.cell(linha, coluna));
        }
        este.temNovas = este.temNovas || dados.isNew(linha);
        ++este.linhas;
    }
    const bool outro = este.bytes == nullptr || *este.bytes != bytes.bytes();
    if (outro) {
        este.bytes = std::make_shared<const std::string>(bytes.take());
    }
    return outro && (tinhaNovas || este.temNovas);
}

RetratoDocumento::Pecas RetratoDocumento::pecas(const Tela& tela) const {
    Pecas pecas{std::make_shared<const std::string>(cabecalho(tela))};
    for (const auto& secao : secoes_) {
        for (const Secao::Bloco& bloco : secao->blocos) {
            if (bloco.linhas > 0) {
                pecas.push_back(bloco.bytes);
            }
        }
    }
    return pecas;
}

std::string RetratoDocumento::cabecalho(const Tela& tela) const {
    ByteWriter bytes;
    retratoEstado::escreve(bytes, documento_, tela.lugar);
    bytes.number(secoes_.size());
    for (const auto& secao : secoes_) {
        const auto pendente = tela.pendentes.find(secao->chave);
        std::size_t linhas = 0;
        for (const Secao::Bloco& bloco : secao->blocos) {
            linhas += bloco.linhas;
        }
        bytes.text(secao->chave);
        bytes.number(pendente == tela.pendentes.end() ? 0 : pendente->second + 1);
        bytes.number(linhas);
        bytes.number(secao->dados->columns().size());
        for (const Column& coluna : secao->dados->columns()) {
            bytes.text(coluna.name);
            bytes.number(static_cast<std::uint64_t>(coluna.type));
        }
    }
    return bytes.take();
}

} // namespace tv
