#include "common/windows/Grade.h"
#include "common/windows/textoQt.h"
#include "composer/bloco.h"
#include "composer/entrada.h"
#include "composer/windows/EdicaoGrade.h"

#include <algorithm>
#include <map>
#include <set>

/// Blocks of cells: copied, pasted, emptied, and what one action leaves behind.
namespace tv {

namespace {

constexpr qsizetype maximoDeRecusas = 20; ///< Told of one block, so that the message stays on the screen.

} // namespace

/// What pasting a block has done so far.
struct EdicaoGrade::Colagem {
    PassoDeEdicao passo;
    QStringList recusadas;               ///< Cells whose text was not taken.
    std::optional<std::size_t> anterior; ///< The row filled last.
    std::size_t semLinha = 0;            ///< Lines that found no row.
    QString motivo;                      ///< What is at fault in the row before them; empty for no room.

    QString mensagem(const Grade& grade) const {
        QStringList partes;
        if (!recusadas.isEmpty()) {
            const bool cabem = recusadas.size() <= maximoDeRecusas;
            partes << grade.texto(Grade::valorInvalido) + recusadas.mid(0, maximoDeRecusas).join(QString()) +
                          (cabem ? QString() : QStringLiteral("\n\t..."));
        }
        if (semLinha > 0) {
            partes << (motivo.isEmpty() ? grade.texto(Grade::itensExcedidos) : motivo);
            partes << QStringLiteral("Linhas que não foram coladas: %1").arg(semLinha);
        }
        return partes.join(QStringLiteral("\n\n"));
    }
};

QModelIndexList EdicaoGrade::escolhidas() const {
    QModelIndexList indices = grade_.selectionModel()->selectedIndexes();
    if (indices.isEmpty() && grade_.currentIndex().isValid()) {
        indices << grade_.currentIndex();
    }
    return indices;
}

QString EdicaoGrade::copia() const {
    std::map<int, std::map<int, std::string>> celulas;
    const QModelIndexList indices = escolhidas();
    for (const QModelIndex& indice : indices) {
        if (isCampo(indice.column())) {
            celulas[indice.row()][indice.column()] =
                paraUtf8(grade_.modelo().textoVisivel(indice.row(), indice.column()));
        }
    }
    bloco::Bloco texto;
    for (const auto& [linha, colunas] : celulas) {
        auto& nova = texto.emplace_back();
        for (const auto& [coluna, celula] : colunas) {
            nova.push_back(celula);
        }
    }
    return paraQt(bloco::escreve(texto));
}

void EdicaoGrade::cola(const QString& texto) {
    const bloco::Bloco bloco = bloco::le(paraUtf8(texto));
    const QModelIndex canto = grade_.currentIndex();
    const int primeira = std::max(canto.row(), 0);
    const int coluna = std::max(canto.column(), 0);
    ModeloGrade& modelo = grade_.modelo();
    if (!canto.isValid() && modelo.rowCount() > 0) {
        return;
    }
    Colagem colagem;
    colagem.passo.chaveGrade = secao_.chave;
    for (std::size_t i = 0; i < bloco.size() && colagem.semLinha == 0; ++i) {
        int linha = primeira + static_cast<int>(i);
        if (linha >= modelo.rowCount()) {
            linha = incluiLinha(colagem);
        }
        if (linha < 0) {
            colagem.semLinha = bloco.size() - i;
        } else {
            colaLinha(linha, coluna, bloco[i], colagem);
        }
    }
    const bool paraNaAnterior = !colagem.motivo.isEmpty() && colagem.anterior;
    if (paraNaAnterior || !grade_.currentIndex().isValid()) {
        const int linha = paraNaAnterior ? modelo.linhaDoNumero(*colagem.anterior) : primeira;
        grade_.setCurrentIndex(modelo.index(linha, coluna));
    }
    conclui(colagem.passo);
    if (const QString mensagem = colagem.mensagem(grade_); !mensagem.isEmpty()) {
        Q_EMIT recusou(mensagem);
    }
}

/// A new row behind the last one, or -1.
int EdicaoGrade::incluiLinha(Colagem& colagem) {
    const RegrasLinha::NovaLinha nova = novaLinha ? novaLinha(colagem.anterior) : RegrasLinha::NovaLinha();
    if (!nova.linha) {
        colagem.motivo = paraQt(nova.mensagem);
        return -1;
    }
    colagem.passo.incluidas.push_back({secao_.chave, *nova.linha, {}});
    return grade_.modelo().linhaDoNumero(*nova.linha);
}

void EdicaoGrade::colaLinha(int linha, int coluna, const std::vector<std::string>& textos, Colagem& colagem) {
    const std::size_t numero = grade_.modelo().numeroDaLinha(linha);
    const bool isNova = !colagem.passo.incluidas.empty() && colagem.passo.incluidas.back().linha == numero;
    std::vector<CelulaEditada> daNova; // goes and comes back with its row
    for (int j = 0; j < static_cast<int>(textos.size()) && isCampo(coluna + j); ++j) {
        const clsCampo& este = campo(coluna + j);
        if (auto valor = entrada::le(este, textos[static_cast<std::size_t>(j)])) {
            muda(linha, coluna + j, std::move(*valor), isNova ? daNova : colagem.passo.celulas);
        } else {
            colagem.recusadas
                << QStringLiteral("\n\tLinha %1: %2").arg(linha + 1).arg(paraQt(este.getNome()));
        }
    }
    colagem.anterior = numero;
}

void EdicaoGrade::limpaCelulas() {
    PassoDeEdicao passo{secao_.chave, {}, {}};
    const QModelIndexList indices = escolhidas();
    for (const QModelIndex& indice : indices) {
        if (isCampo(indice.column())) {
            muda(indice.row(), indice.column(), Null{}, passo.celulas);
        }
    }
    conclui(passo);
}

void EdicaoGrade::conclui(const PassoDeEdicao& passo) {
    std::set<std::size_t> tocadas;
    for (const CelulaEditada& celula : passo.celulas) {
        tocadas.insert(celula.linha);
    }
    for (const LinhaGuardada& incluida : passo.incluidas) {
        tocadas.insert(incluida.linha);
    }
    if (!tocadas.empty()) {
        Q_EMIT editou(passo);
        termina({tocadas.begin(), tocadas.end()});
    }
}

/// The active row stays under way; the others have been left.
void EdicaoGrade::termina(const std::vector<std::size_t>& linhas) {
    const int ativa = grade_.linhaAtiva();
    const std::size_t numeroAtivo = ativa >= 0 ? grade_.modelo().numeroDaLinha(ativa) : 0;
    std::vector<std::size_t> deixadas;
    for (const std::size_t linha : linhas) {
        if (ativa >= 0 && linha == numeroAtivo) {
            pendente_ = numeroAtivo;
        } else {
            deixadas.push_back(linha);
        }
    }
    if (!deixadas.empty()) {
        Q_EMIT linhasTerminam(deixadas);
    }
}

void EdicaoGrade::retoma(const std::vector<std::size_t>& linhas, std::optional<std::size_t> coluna) {
    const auto visivel = std::find_if(linhas.begin(), linhas.end(), [this](std::size_t linha) {
        return grade_.modelo().linhaDoNumero(linha) >= 0;
    });
    if (visivel == linhas.end()) {
        return;
    }
    const int atual = std::max(grade_.currentIndex().column(), 0);
    grade_.setCurrentIndex(grade_.modelo().index(grade_.modelo().linhaDoNumero(*visivel),
                                                 coluna ? static_cast<int>(*coluna) : atual));
    termina(linhas);
}

} // namespace tv
