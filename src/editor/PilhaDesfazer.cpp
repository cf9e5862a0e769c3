#include "editor/PilhaDesfazer.h"

#include "editor/General.h"

#include <algorithm>
#include <cstdlib>
#include <utility>

namespace tv {
namespace {

bool isHigh(char16_t unit) noexcept {
    return unit >= 0xD800 && unit < 0xDC00;
}
bool isLow(char16_t unit) noexcept {
    return unit >= 0xDC00 && unit < 0xE000;
}
bool isBlank(char16_t unit) noexcept {
    return unit == u' ' || unit == u'\t';
}

/// One character, as a key press brings it in or takes it away.
bool isOneCharacter(std::u16string_view s) noexcept {
    return s.size() == 1 || (s.size() == 2 && isHigh(s[0]) && isLow(s[1]));
}

/// Takes away what is equal at both ends of what gave way and what came in. Characters stay whole.
MudancaTexto essencia(MudancaTexto mudanca, const Texto& antes) {
    mudanca.inicio = std::min(mudanca.inicio, antes.tamanho());
    mudanca.removidos = std::min(mudanca.removidos, antes.tamanho() - mudanca.inicio);
    if (mudanca.removidos == 0 || mudanca.inserido.empty()) {
        return mudanca;
    }
    const std::u16string velho = antes.trecho(mudanca.inicio, mudanca.removidos);
    const std::u16string& novo = mudanca.inserido;
    const std::size_t menor = std::min(velho.size(), novo.size());
    auto comuns = static_cast<std::size_t>(
        std::mismatch(velho.begin(), velho.begin() + static_cast<std::ptrdiff_t>(menor), novo.begin()).first -
        velho.begin());
    if (comuns > 0 && isHigh(velho[comuns - 1])) {
        --comuns;
    }
    const auto resto = static_cast<std::ptrdiff_t>(menor - comuns);
    auto finais = static_cast<std::size_t>(
        std::mismatch(velho.rbegin(), velho.rbegin() + resto, novo.rbegin()).first - velho.rbegin());
    if (finais > 0 && isLow(velho[velho.size() - finais])) {
        --finais;
    }
    return {mudanca.inicio + comuns, velho.size() - comuns - finais,
            novo.substr(comuns, novo.size() - comuns - finais)};
}

std::int32_t posicao(std::size_t lugar) {
    return static_cast<std::int32_t>(lugar);
}

} // namespace

void PilhaDesfazer::inicia(Texto texto) {
    atual_ = std::move(texto);
    undoStack.clear();
    redoStack.clear();
    unidades_ = 0;
    grupo_ = {};
    EstadoTexto estado;
    estado.Text = atual_;
    estado.TextLen = posicao(atual_.tamanho());
    undoStack.push_back(std::move(estado));
}

void PilhaDesfazer::aplica(const MudancaTexto& mudanca) {
    if (mudanca.removidos > 0) {
        atual_ = atual_.remove(mudanca.inicio, mudanca.removidos);
    }
    if (!mudanca.inserido.empty()) {
        atual_ = atual_.insere(mudanca.inicio, mudanca.inserido);
    }
}

void PilhaDesfazer::acompanha(const MudancaTexto& mudanca) {
    aplica(mudanca);
    grupo_ = {};
}

void PilhaDesfazer::registra(MudancaTexto mudanca, Instante agora) {
    mudanca = essencia(std::move(mudanca), atual_);
    if (mudanca.removidos == 0 && mudanca.inserido.empty()) {
        return;
    }
    redoStack.clear();
    const bool troca = mudanca.removidos > 0 && !mudanca.inserido.empty();
    if (troca) {
        registraUm({mudanca.inicio, mudanca.removidos, {}}, agora, true);
        mudanca.removidos = 0;
    }
    registraUm(mudanca, agora, false);
    limita();
}

void PilhaDesfazer::registraUm(const MudancaTexto& mudanca, Instante agora, bool parcial) {
    if (!parcial && juntaAoGrupo(mudanca, agora)) {
        return;
    }
    aplica(mudanca);
    empilha(mudanca, parcial);
    abreGrupo(mudanca, agora);
}

void PilhaDesfazer::empilha(const MudancaTexto& mudanca, bool parcial) {
    EstadoTexto estado;
    estado.Text = atual_;
    estado.SelStart = posicao(mudanca.inicio + mudanca.inserido.size());
    estado.TextLen = posicao(atual_.tamanho());
    estado.parcial = parcial;
    estado.custo = mudanca.inserido.size();
    unidades_ += estado.custo;
    undoStack.push_back(std::move(estado));
}

void PilhaDesfazer::abreGrupo(const MudancaTexto& mudanca, Instante agora) {
    const bool remocao = mudanca.inserido.empty();
    const bool tecla =
        remocao ? mudanca.removidos <= 2 : isOneCharacter(mudanca.inserido) && mudanca.inserido != u"\n";
    grupo_ = {tecla, remocao, mudanca.inicio, mudanca.removidos, tecla ? mudanca.inserido : u"", agora};
}

/// Takes a key press into the run that the present state stands for. False when it starts something new.
bool PilhaDesfazer::juntaAoGrupo(const MudancaTexto& mudanca, Instante agora) {
    const bool remocao = mudanca.inserido.empty();
    if (!grupo_.aberto || grupo_.remocao != remocao || agora - grupo_.ultimo >= pausa ||
        undoStack.size() < 2) {
        return false;
    }
    EstadoTexto& presente = undoStack.back();
    const Texto& antes = undoStack[undoStack.size() - 2].Text;
    if (remocao) {
        const bool seguida =
            mudanca.inicio == grupo_.inicio || mudanca.inicio + mudanca.removidos == grupo_.inicio;
        if (!seguida || mudanca.removidos > 2 || grupo_.removidos + mudanca.removidos > maxGrupo) {
            return false;
        }
        grupo_.inicio = mudanca.inicio;
        grupo_.removidos += mudanca.removidos;
        atual_ = antes.remove(grupo_.inicio, grupo_.removidos);
    } else {
        const bool novaPalavra = isBlank(grupo_.inserido.back()) && !isBlank(mudanca.inserido.front());
        const std::size_t fim = grupo_.inicio + grupo_.inserido.size();
        if (mudanca.inicio != fim || !isOneCharacter(mudanca.inserido) || mudanca.inserido == u"\n" ||
            novaPalavra || grupo_.inserido.size() + mudanca.inserido.size() > maxGrupo) {
            return false;
        }
        grupo_.inserido += mudanca.inserido;
        atual_ = antes.insere(grupo_.inicio, grupo_.inserido);
    }
    grupo_.ultimo = agora;
    presente.Text = atual_;
    presente.SelStart = posicao(mudanca.inicio + mudanca.inserido.size());
    presente.TextLen = posicao(atual_.tamanho());
    presente.custo += mudanca.inserido.size();
    unidades_ += mudanca.inserido.size();
    return true;
}

void PilhaDesfazer::limita() {
    const bool emDois = undoStack.size() > 2 && undoStack[undoStack.size() - 2].parcial;
    const std::size_t ultimoPasso = emDois ? 3 : 2;
    const auto demais = [this] { return undoStack.size() > maxEstados_ || unidades_ > maxUnidades_; };
    while (undoStack.size() > ultimoPasso && (demais() || undoStack.front().parcial)) {
        unidades_ -= std::min(unidades_, undoStack.front().custo);
        undoStack.pop_front();
    }
}

PassoTexto PilhaDesfazer::passoUndo() const {
    const EstadoTexto& b = undoStack.at(undoStack.size() - 1);
    const EstadoTexto& a = undoStack.at(undoStack.size() - 2);
    const std::int32_t diferenca = std::abs(b.TextLen - a.TextLen);
    if (b.TextLen > a.TextLen) {
        return {true, b.SelStart - diferenca, diferenca, {}};
    }
    // The caret counts from 0, positions in a text from 1. Only the piece itself is copied out of the longer
    // text, which may be a large one.
    const std::int32_t lugar = b.SelStart + diferenca + 1;
    const std::int32_t base = std::max(0, lugar - diferenca - 1);
    const std::u16string perto =
        a.Text.trecho(static_cast<std::size_t>(base), static_cast<std::size_t>(diferenca));
    std::u16string trecho = General::Change(perto, u"", lugar - base);
    return {false, b.SelStart, posicao(trecho.size()), std::move(trecho)};
}

PassoTexto PilhaDesfazer::passoRedo() const {
    const EstadoTexto& antes = undoStack.at(undoStack.size() - 1);
    const EstadoTexto& depois = redoStack.at(redoStack.size() - 1);
    const std::int32_t diferenca = depois.TextLen - antes.TextLen;
    if (diferenca <= 0) {
        return {true, depois.SelStart, -diferenca, {}};
    }
    const std::int32_t inicio = std::max(0, depois.SelStart - diferenca);
    std::u16string trecho =
        depois.Text.trecho(static_cast<std::size_t>(inicio), static_cast<std::size_t>(diferenca));
    return {false, inicio, posicao(trecho.size()), std::move(trecho)};
}

void PilhaDesfazer::desfeito() {
    redoStack.push_back(std::move(undoStack.back()));
    undoStack.pop_back();
    grupo_ = {};
}

void PilhaDesfazer::refeito() {
    undoStack.push_back(std::move(redoStack.back()));
    redoStack.pop_back();
    grupo_ = {};
}

} // namespace tv
