#include "validation/LoteDeArquivos.h"

#include "platform/Files.h"
#include "platform/format.h"
#include "platform/text.h"

#include <algorithm>
#include <unordered_set>

namespace tv::lote {

namespace {

constexpr int tamanhoDoCaminho = 252;
constexpr double bytesPorKB = 1024;

bool isXml(const std::filesystem::path& arquivo) {
    return text::equalsNoCase(files::toText(arquivo.extension()), ".xml");
}

/// A folder that may not be read holds nothing for us.
void acrescentaPasta(const std::filesystem::path& pasta, std::vector<std::filesystem::path>& lista) {
    const auto primeiro = static_cast<std::ptrdiff_t>(lista.size());
    std::error_code falha;
    for (auto item = std::filesystem::directory_iterator(pasta, falha);
         !falha && item != std::filesystem::directory_iterator(); item.increment(falha)) {
        std::error_code semTipo;
        if (isXml(item->path()) && !item->is_directory(semTipo)) {
            lista.push_back(item->path());
        }
    }
    std::sort(lista.begin() + primeiro, lista.end());
}

/// A row for a file of so many bytes.
void acrescenta(RecordSet& registros, std::string_view caminho, std::uintmax_t bytes) {
    const std::string nome(text::trim(caminho));
    registros.AddNew();
    registros.set(coluna::boleto, nome);
    registros.set(coluna::arquivo, nome);
    registros.set(coluna::tamanho, static_cast<double>(bytes) / bytesPorKB);
    registros.set(coluna::tempo, std::string("00:00"));
    registros.set(coluna::validou, false);
    registros.set(coluna::isValid, false);
    registros.set(coluna::isModified, false);
    registros.set(coluna::isNew, true);
    registros.Update();
}

} // namespace

std::shared_ptr<RecordSet> criaRegistros() {
    auto registros = std::make_shared<RecordSet>();
    const auto campo = [&](std::string_view nome, ColumnType tipo, int tamanho) {
        registros->Append(std::string(nome), tipo, tamanho);
    };
    campo(coluna::status, ColumnType::FixedChar, 0);
    campo(coluna::boleto, ColumnType::FixedChar, tamanhoDoCaminho);
    campo(coluna::arquivo, ColumnType::FixedChar, tamanhoDoCaminho);
    campo(coluna::tamanho, ColumnType::Double, 8);
    campo(coluna::tempo, ColumnType::FixedChar, 5);
    campo(coluna::isValid, ColumnType::Boolean, 0);
    campo(coluna::validou, ColumnType::Boolean, 0);
    campo(coluna::isNew, ColumnType::Boolean, 0);
    campo(coluna::isModified, ColumnType::Boolean, 0);
    registros->Open();
    return registros;
}

std::vector<std::string> novos(const RecordSet& registros, const std::vector<std::string>& escolhidos) {
    std::unordered_set<std::string, text::Hash, std::equal_to<>> presentes;
    const auto linhas = registros.Clone();
    for (; !linhas->EOF_(); linhas->MoveNext()) {
        presentes.emplace(text::trim(defaultText(linhas->get(coluna::arquivo))));
    }
    std::vector<std::string> restantes;
    for (const std::string& caminho : escolhidos) {
        if (presentes.emplace(text::trim(caminho)).second) {
            restantes.push_back(caminho);
        }
    }
    return restantes;
}

void adiciona(RecordSet& registros, std::string_view caminho) {
    acrescenta(registros, caminho, files::stamp(std::filesystem::path(caminho)).size);
}

void substitui(RecordSet& registros, std::string_view caminho) {
    const auto linhas = registros.Clone();
    for (; !linhas->EOF_(); linhas->MoveNext()) {
        if (defaultText(linhas->get(coluna::arquivo)) == caminho) {
            linhas->Delete();
        }
    }
    const std::filesystem::path arquivo(caminho);
    acrescenta(registros, caminho, files::exists(arquivo) ? files::stamp(arquivo).size : 0);
}

std::vector<std::filesystem::path> arquivosXml(const std::vector<std::filesystem::path>& soltos) {
    std::vector<std::filesystem::path> lista;
    for (const std::filesystem::path& solto : soltos) {
        std::error_code semTipo;
        if (std::filesystem::is_directory(solto, semTipo)) {
            acrescentaPasta(solto, lista);
        } else if (isXml(solto)) {
            lista.push_back(solto);
        }
    }
    return lista;
}

std::string contagem(std::size_t linhas) {
    return format::format(Value(static_cast<double>(linhas)), "###,##0") + " Arquivos";
}

std::string tempoEntre(DateTime inicio, DateTime fim) {
    constexpr std::chrono::seconds dia = std::chrono::days{1};
    const std::chrono::seconds noDia = ((fim - inicio) % dia + dia) % dia;
    constexpr std::size_t semHoras = 3;
    return format::format(DateTime(noDia), "HH:MM:SS").substr(semHoras);
}

std::string perguntaRemocao(std::size_t linhas) {
    constexpr std::string_view modelo =
        "O@1 boleto@1 selecionado@1 ser@2 removido@1 da lista. Deseja continuar?";
    const bool uma = linhas == 1;
    return text::replaceAll(text::replaceAll(modelo, "@1", uma ? "" : "s"), "@2", uma ? "á" : "ão");
}

Reacao reacao(bool validou, bool isValid, std::string_view status) {
    if (!validou) {
        return Reacao::Nenhuma;
    }
    if (isValid) {
        return Reacao::DizValido;
    }
    return text::trim(status) == naoValido ? Reacao::Abre : Reacao::Nenhuma;
}

} // namespace tv::lote
