#include "common/windows/ModeloGrade.h"

#include "app/windows/frmObjetos.h"
#include "common/windows/textoQt.h"
#include "logging/Routine.h"
#include "platform/Error.h"
#include "platform/format.h"
#include "platform/text.h"

#include <algorithm>
#include <utility>

namespace tv {

namespace {

/// Beyond this many separate stretches of removed rows the view is quicker told to start over.
constexpr std::size_t maximoDeTrechos = 64;

/// What an editor starts from.
struct ValorDeEdicao {
    QVariant operator()(Null) const { return {}; }
    QVariant operator()(DateTime data) const { return paraQt(defaultText(data)); }
    QVariant operator()(const std::string& texto) const { return paraQt(texto); }
    template<typename Simples>
    QVariant operator()(Simples simples) const {
        return simples;
    }
};

/// A typed text as a value of the column. Nothing for a text that does not read so.
std::optional<Value> valorDigitado(ColumnType tipo, const std::string& texto) {
    if (texto.empty()) {
        return Null{};
    }
    switch (tipo) {
    case ColumnType::FixedChar:
        return texto;
    case ColumnType::Integer:
        return text::parseInt32(texto);
    case ColumnType::Double:
        return text::documentNumber(texto);
    case ColumnType::Date:
        return format::readDate(texto);
    case ColumnType::Boolean:
        if (text::equalsNoCase(texto, "True") || text::equalsNoCase(texto, "False")) {
            return text::equalsNoCase(texto, "True");
        }
        return std::nullopt;
    }
    return std::nullopt;
}

} // namespace

ModeloGrade::ModeloGrade(QObject* dono)
    : QAbstractTableModel(dono) {}

ModeloGrade::~ModeloGrade() {
    if (dados_) {
        dados_->unsubscribe(assinatura_);
    }
}

void ModeloGrade::setDados(std::shared_ptr<RecordSet> dados) {
    beginResetModel();
    if (dados_) {
        dados_->unsubscribe(assinatura_);
    }
    dados_ = std::move(dados);
    escrita_ = dados_ ? dados_->Clone() : nullptr;
    assinatura_ = dados_ ? dados_->subscribe([this](const auto& mudanca) { ouve(mudanca); }) : 0;
    linhas_ = dados_ ? dados_->rows() : std::vector<std::size_t>();
    marcas_.clear();
    imagens_.clear();
    colunasIniciais();
    endResetModel();
    Q_EMIT dadosTrocados();
}

void ModeloGrade::colunasIniciais() {
    colunas_.clear();
    if (!dados_) {
        return;
    }
    for (const Column& coluna : dados_->columns()) {
        ColunaGrade& aparencia = colunas_.emplace_back();
        aparencia.titulo = paraQt(coluna.name);
    }
}

void ModeloGrade::recarrega() {
    beginResetModel();
    linhas_ = dados_ ? dados_->rows() : std::vector<std::size_t>();
    endResetModel();
}

int ModeloGrade::indice(std::string_view coluna) const {
    if (!dados_) {
        throw Error(errc::invalidCall, "ModeloGrade", "A coluna não existe: " + std::string(coluna));
    }
    return static_cast<int>(dados_->columnIndex(coluna));
}

void ModeloGrade::setColuna(std::string_view nome, ColunaGrade aparencia) {
    const int posicao = indice(nome);
    colunas_[static_cast<std::size_t>(posicao)] = std::move(aparencia);
    Q_EMIT headerDataChanged(Qt::Horizontal, posicao, posicao);
    if (!linhas_.empty()) {
        Q_EMIT dataChanged(index(0, posicao), index(rowCount() - 1, posicao));
    }
}

bool ModeloGrade::temEditavel() const {
    return std::any_of(colunas_.begin(), colunas_.end(),
                       [](const ColunaGrade& coluna) { return coluna.editavel && !coluna.oculta; });
}

std::size_t ModeloGrade::numeroDaLinha(int linha) const {
    if (linha < 0 || linha >= rowCount()) {
        throw Error(errc::subscriptOutOfRange, "ModeloGrade",
                    "A linha não está na grade: " + std::to_string(linha));
    }
    return linhas_[static_cast<std::size_t>(linha)];
}

int ModeloGrade::linhaDoNumero(std::size_t numero) const {
    const auto lugar = std::lower_bound(linhas_.begin(), linhas_.end(), numero);
    const bool achou = lugar != linhas_.end() && *lugar == numero;
    return achou ? static_cast<int>(lugar - linhas_.begin()) : -1;
}

const Value* ModeloGrade::celula(int linha, int coluna) const {
    return dados_ ? dados_->cell(numeroDaLinha(linha), static_cast<std::size_t>(coluna)) : nullptr;
}

Value ModeloGrade::valor(int linha, std::string_view coluna) const {
    const Value* achado = celula(linha, indice(coluna));
    return achado != nullptr ? *achado : Value();
}

QString ModeloGrade::texto(int linha, std::string_view coluna) const {
    return paraQt(defaultText(valor(linha, coluna)));
}

QString ModeloGrade::textoVisivel(int linha, int coluna) const {
    const Value* achado = celula(linha, coluna);
    return achado != nullptr ? textoDe(*achado, this->coluna(coluna)) : QString();
}

QString ModeloGrade::textoDe(const Value& valor, const ColunaGrade& coluna) const {
    if (coluna.tabela) {
        const std::string codigo = defaultText(valor);
        const clsEntradaTabela* entrada = coluna.tabela->linha.find(codigo);
        return paraQt(entrada != nullptr ? entrada->valor : codigo);
    }
    return paraQt(coluna.formato.empty() ? defaultText(valor) : format::format(valor, coluna.formato));
}

void ModeloGrade::setValor(int linha, std::string_view coluna, Value valor) {
    const std::size_t numero = numeroDaLinha(linha);
    escrita_->MoveTo(numero);
    escrita_->set(coluna, std::move(valor));
    if (dados_->isNew(numero)) {
        mudou(linha);
    } else {
        escrita_->Update();
    }
}

void ModeloGrade::confirma(int linha) {
    escrita_->MoveTo(numeroDaLinha(linha));
    escrita_->Update();
}

std::size_t ModeloGrade::chaveDaCelula(std::size_t numero, int coluna) const {
    return numero * colunas_.size() + static_cast<std::size_t>(coluna);
}

void ModeloGrade::setImagem(int linha, std::string_view coluna, const QString& chave) {
    const int posicao = indice(coluna);
    const std::size_t celula = chaveDaCelula(numeroDaLinha(linha), posicao);
    if (chave.isEmpty()) {
        imagens_.erase(celula);
    } else {
        imagens_[celula] = chave;
    }
    const QModelIndex lugar = index(linha, posicao);
    Q_EMIT dataChanged(lugar, lugar, {Qt::DecorationRole});
}

QString ModeloGrade::imagem(int linha, std::string_view coluna) const {
    const auto achada = imagens_.find(chaveDaCelula(numeroDaLinha(linha), indice(coluna)));
    return achada == imagens_.end() ? QString() : achada->second;
}

void ModeloGrade::setMarca(int linha, QVariant marca) {
    marcas_[numeroDaLinha(linha)] = std::move(marca);
}

QVariant ModeloGrade::marca(int linha) const {
    const auto achada = marcas_.find(numeroDaLinha(linha));
    return achada == marcas_.end() ? QVariant() : achada->second;
}

void ModeloGrade::ouve(const RecordSet::Change& mudanca) {
    if (mudanca.kind == RecordSet::Change::Kind::Removed) {
        esquece(mudanca.row);
    }
    if (removendo_) {
        return; // the rows are counted when the removal is through
    }
    const int linha = linhaDoNumero(mudanca.row);
    const bool visivel = dados_->shows(mudanca.row);
    if (visivel && linha < 0) {
        insere(mudanca.row);
    } else if (visivel) {
        mudou(linha);
    } else if (linha >= 0) {
        retira(linha);
    }
}

void ModeloGrade::insere(std::size_t numero) {
    const auto lugar = std::lower_bound(linhas_.begin(), linhas_.end(), numero);
    const int linha = static_cast<int>(lugar - linhas_.begin());
    beginInsertRows({}, linha, linha);
    linhas_.insert(lugar, numero);
    endInsertRows();
}

void ModeloGrade::retira(int linha) {
    beginRemoveRows({}, linha, linha);
    linhas_.erase(linhas_.begin() + linha);
    endRemoveRows();
}

void ModeloGrade::esquece(std::size_t numero) {
    marcas_.erase(numero);
    if (!imagens_.empty()) {
        for (int coluna = 0; coluna < columnCount(); ++coluna) {
            imagens_.erase(chaveDaCelula(numero, coluna));
        }
    }
}

void ModeloGrade::mudou(int linha) {
    Q_EMIT dataChanged(index(linha, 0), index(linha, columnCount() - 1));
}

void ModeloGrade::apaga(std::size_t numero) {
    if (dados_->cell(numero, 0) != nullptr) {
        escrita_->MoveTo(numero);
        escrita_->Delete();
    }
}

void ModeloGrade::removeTrecho(const Trecho& trecho) {
    beginRemoveRows({}, trecho.first, trecho.second);
    const auto inicio = linhas_.begin() + trecho.first;
    const auto fim = linhas_.begin() + trecho.second + 1;
    std::for_each(inicio, fim, [this](std::size_t numero) { apaga(numero); });
    linhas_.erase(inicio, fim);
    endRemoveRows();
}

std::vector<ModeloGrade::Trecho> ModeloGrade::trechos(std::vector<int> linhas) const {
    std::sort(linhas.begin(), linhas.end());
    std::vector<Trecho> achados;
    for (const int linha : linhas) {
        numeroDaLinha(linha); // refuses what is not there before anything is removed
        if (!achados.empty() && linha <= achados.back().second + 1) {
            achados.back().second = linha;
        } else {
            achados.emplace_back(linha, linha);
        }
    }
    return achados;
}

void ModeloGrade::remove(const std::vector<int>& linhas) {
    const std::vector<Trecho> aRemover = trechos(linhas);
    if (aRemover.empty()) {
        return;
    }
    removendo_ = true;
    if (aRemover.size() <= maximoDeTrechos) {
        std::for_each(aRemover.rbegin(), aRemover.rend(),
                      [this](const Trecho& trecho) { removeTrecho(trecho); });
    } else {
        beginResetModel();
        for (const int linha : linhas) {
            apaga(numeroDaLinha(linha));
        }
        linhas_ = dados_->rows();
        endResetModel();
    }
    removendo_ = false;
    if (linhas_.size() != dados_->RecordCount()) {
        recarrega(); // somebody changed further rows meanwhile
    }
}

int ModeloGrade::rowCount(const QModelIndex& pai) const {
    return pai.isValid() ? 0 : static_cast<int>(linhas_.size());
}

int ModeloGrade::columnCount(const QModelIndex& pai) const {
    return pai.isValid() ? 0 : static_cast<int>(colunas_.size());
}

QVariant ModeloGrade::icone(const QModelIndex& indice) const {
    const auto achada = imagens_.find(chaveDaCelula(numeroDaLinha(indice.row()), indice.column()));
    if (achada == imagens_.end()) {
        return {};
    }
    const std::string chave = paraUtf8(achada->second);
    if (icones_.find(chave) == icones_.end()) {
        QIcon nova; // stays empty for a key that nothing answers to
        proceed([&] { nova = frmObjetos::imagemSobreClaro(achada->second); });
        icones_.emplace(chave, nova);
    }
    return icones_.at(chave);
}

QVariant ModeloGrade::data(const QModelIndex& indice, int papel) const {
    if (!indice.isValid() || indice.row() >= rowCount() || indice.column() >= columnCount()) {
        return {};
    }
    const ColunaGrade& aparencia = coluna(indice.column());
    const Value* achado = celula(indice.row(), indice.column());
    switch (papel) {
    case Qt::DisplayRole:
        return achado != nullptr ? textoDe(*achado, aparencia) : QString();
    case Qt::EditRole:
        return achado != nullptr ? std::visit(ValorDeEdicao{}, *achado) : QVariant();
    case Qt::DecorationRole:
        return icone(indice);
    case Qt::TextAlignmentRole:
        return QVariant::fromValue(aparencia.alinhamento | Qt::AlignVCenter);
    case Qt::FontRole:
        return aparencia.fonte ? QVariant(*aparencia.fonte) : QVariant();
    default:
        return {};
    }
}

bool ModeloGrade::setData(const QModelIndex& indice, const QVariant& valor, int papel) {
    if (papel != Qt::EditRole || !(flags(indice) & Qt::ItemIsEditable)) {
        return false;
    }
    const Column& coluna = dados_->columns()[static_cast<std::size_t>(indice.column())];
    return proceed([&] {
        const std::optional<Value> lido = valorDigitado(coluna.type, paraUtf8(valor.toString()));
        if (!lido) {
            throw Error(errc::typeMismatch, "ModeloGrade", "O valor não é do tipo da coluna " + coluna.name);
        }
        setValor(indice.row(), coluna.name, *lido);
    });
}

QVariant ModeloGrade::headerData(int secao, Qt::Orientation orientacao, int papel) const {
    if (orientacao == Qt::Horizontal && papel == Qt::DisplayRole && secao >= 0 && secao < columnCount()) {
        return coluna(secao).titulo;
    }
    return QAbstractTableModel::headerData(secao, orientacao, papel);
}

Qt::ItemFlags ModeloGrade::flags(const QModelIndex& indice) const {
    if (!indice.isValid() || indice.row() >= rowCount() || indice.column() >= columnCount()) {
        return Qt::NoItemFlags;
    }
    const Qt::ItemFlags comuns = Qt::ItemIsSelectable | Qt::ItemIsEnabled | Qt::ItemNeverHasChildren;
    return coluna(indice.column()).editavel ? comuns | Qt::ItemIsEditable : comuns;
}

} // namespace tv
