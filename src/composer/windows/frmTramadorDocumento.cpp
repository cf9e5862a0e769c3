#include "app/Aplicacao.h"
#include "app/windows/mdiMain.h"
#include "common/windows/Espera.h"
#include "common/windows/FileOperations.h"
#include "common/windows/Grade.h"
#include "common/windows/GuardaDaJanela.h"
#include "common/windows/frmMensagem.h"
#include "common/windows/mensagem.h"
#include "common/windows/textoQt.h"
#include "composer/EscritorBoleto.h"
#include "composer/LeitorBoleto.h"
#include "composer/gravacao.h"
#include "composer/mestres.h"
#include "composer/nomeDoArquivo.h"
#include "composer/windows/EdicaoGrade.h"
#include "composer/windows/VistaFundos.h"
#include "composer/windows/frmTramador.h"
#include "editor/windows/frmEditor.h"
#include "logging/Routine.h"
#include "platform/Files.h"
#include "platform/text.h"
#include "validation/windows/frmBrowser.h"

#include <QAction>
#include <QDir>
#include <QFileInfo>
#include <QLabel>

#include <algorithm>

/// New documents, opening, validating and saving.
namespace tv {

namespace {

using mensagem::Icone;

constexpr int figuraDocumento = 3; ///< Of the progress window.
constexpr int figuraValidador = 1;

bool soDominio(const std::shared_ptr<const Resultados>& resultados) {
    return !resultados || std::all_of(resultados->begin(), resultados->end(),
                                      [](const clsResultado& resultado) { return resultado.isDominio(); });
}

/// A proposed name without a folder stands in the document's folder.
QString juntoDe(const std::string& documento, const QString& nome) {
    const bool semPasta = !nome.isEmpty() && QFileInfo(nome).isRelative();
    return documento.empty() || !semPasta ? nome : QFileInfo(paraQt(documento)).dir().filePath(nome);
}

/// A file that is taken away at the end, unless it has got another name by then.
class ArquivoTemporario {
public:
    ArquivoTemporario()
        : caminho_(files::createTemporary(aplicacao::pasta(), "kvo")) {}
    ~ArquivoTemporario() {
        std::error_code ignorado;
        std::filesystem::remove(caminho_, ignorado);
    }
    ArquivoTemporario(const ArquivoTemporario&) = delete;
    ArquivoTemporario& operator=(const ArquivoTemporario&) = delete;
    const std::filesystem::path& caminho() const noexcept { return caminho_; }

private:
    std::filesystem::path caminho_;
};

} // namespace

QString frmTramador::tituloDoResultado() const {
    return paraQt(documento_.boleto()->getNome() + " (" + documento_.boleto()->getVersao() + ")");
}

/// False where the user wants the document saved and it was not: it stays on the screen.
bool frmTramador::perguntaSeSalva() {
    if (!mensagem::pergunta(QStringLiteral("Deseja salvar o boleto?"), Icone::Pergunta)) {
        return true;
    }
    salvarBoleto();
    return documento_.estado.salvo;
}

void frmTramador::novoBoleto() {
    const bool criou = guarded("frmTramador.novoBoleto", [&] {
        terminaEdicao();
        const bool podePerder = !documento_.estado.salvo || mestres::temDados(documento_);
        if (podePerder && !perguntaSeSalva()) {
            return;
        }
        documento_.estado.arquivo.clear(); // the new document has not been saved anywhere
        painel1_->clear();
        abrir(documento_.boleto());
    });
    if (!criou) {
        mensagem::mostra(QStringLiteral("Falha ao tentar criar novo Boleto!"), Icone::Exclamacao);
    }
}

// --- opening

void frmTramador::abrirBoleto(const QString& caminho) {
    terminaEdicao();
    bool ficou = false;
    const bool abriu = guarded("frmTramador.abrirBoleto", [&] {
        documento_.estado.abrindo = true;
        ficou = !documento_.estado.salvo && !perguntaSeSalva();
        if (ficou) {
            return;
        }
        const QString nome = escolheArquivo(caminho);
        if (documento_.arvoreVisivel()) {
            documento_.limpaArvore();
        }
        if (!nome.trimmed().isEmpty()) {
            abreArquivo(nome);
        }
    });
    if (!abriu) {
        mensagem::mostra(QStringLiteral("Falha ao tentar abrir o boleto!"), Icone::Exclamacao);
    }
    if (!ficou) {
        proceed([&] {
            poeNoTopo(documento_.getGrid());
            gradeAtual().setLinhaAtiva(0);
        });
    }
}

QString frmTramador::escolheArquivo(const QString& caminho) {
    if (!caminho.isEmpty()) {
        documento_.estado.arquivo = paraUtf8(caminho);
        return caminho;
    }
    QString nome = paraQt(documento_.estado.arquivo);
    return FileOperations::abreDocumento(this, nome);
}

void frmTramador::abreArquivo(const QString& nome) {
    status(QStringLiteral("Abrindo boleto ..."));
    if (aceitaParaAbrir(nome)) {
        carrega(nome);
    }
}

/// Validates the file and asks where it has faults.
bool frmTramador::aceitaParaAbrir(const QString& nome) {
    if (validarBoleto(nome, false)) {
        return true;
    }
    const bool continua =
        soDominio(resultados_) &&
        mensagem::pergunta(QStringLiteral("Boleto inválido!\n\nAlgumas informações podem ser perdidas!  \n\n"
                                          "Deseja continuar?"),
                           Icone::Exclamacao);
    boletoInvalido(nome, !continua);
    return continua;
}

/// Loads a file that was checked before. What was read before a failure stays.
void frmTramador::carrega(const QString& nome) {
    const Espera espera;
    const GuardaDaJanela::Pausa pausa(*guarda_);
    frmMensagem progresso;
    progresso.setMsg(QStringLiteral("Arquivo ") + nome, QStringLiteral("Abrindo boleto"), 0, figuraDocumento);
    historico_.limpa();
    for (const auto& grade : grades_) {
        grade->painel->grade().modelo().setDados(nullptr);
    }
    LeitorBoleto leitor(documento_, {[&](std::size_t maximo) { progresso.setMax(static_cast<int>(maximo)); },
                                     [&] { progresso.incProgress(); }});
    treeFundos_->setUpdatesEnabled(false);
    bool leu = false;
    const auto volta = [&] {
        treeFundos_->setUpdatesEnabled(true);
        for (const auto& grade : grades_) {
            vincula(*grade);
        }
        lugar_ = documento_.arvore.chaveSelecionada();
        atualizaBotoes();
    };
    try {
        leu = leitor.abre(paraCaminho(nome));
    } catch (...) {
        volta();
        throw;
    }
    volta();
    if (leu) {
        documento_.estado.arquivo = paraUtf8(nome);
        documento_.estado.salvo = true;
        documentoSalvo();
        painel1_->setText(nome);
        status(QStringLiteral("Pronto"));
    }
}

// --- validating

bool frmTramador::validarBoleto(const QString& caminho, bool mostraMensagem) {
    bool valido = false;
    const bool validou = guarded("frmTramador.validarBoleto", [&] {
        {
            const Espera espera;
            frmMensagem progresso;
            progresso.setMsg(QStringLiteral("Arquivo ") + caminho, QStringLiteral("Validando Boleto"), 0,
                             figuraValidador);
            status(QStringLiteral("Validando arquivo ..."));
            clsValidador validador;
            valido = validador.isValido(paraCaminho(caminho), documento_.boleto());
            resultados_ = valido ? nullptr : validador.getResultado();
        }
        if (valido) {
            if (mostraMensagem) {
                mensagem::mostra(QStringLiteral("Boleto válido"), Icone::Informacao);
            }
            botao(QStringLiteral("btnExportarExcel")).setEnabled(true);
        } else if (mostraMensagem) {
            boletoInvalido(caminho, true);
        }
    });
    status(QStringLiteral("Pronto"));
    if (!validou) {
        mensagem::mostra(QStringLiteral("Falha ao tentar validar o arquivo!"), Icone::Exclamacao);
    }
    return valido;
}

void frmTramador::boletoInvalido(const QString& caminho, bool pergunta) {
    if (!pergunta) {
        auto& relatorio = criaJanela<frmBrowser>();
        relatorio.abrir(resultados_, tituloDoResultado(), caminho);
        mdiMain::instancia().addJanela(relatorio);
        return;
    }
    if (mensagem::perguntaAcimaDeTudo(QStringLiteral("Boleto inválido!\n\nDeseja abrir o editor?"),
                                      Icone::Critico)) {
        auto& editor = criaJanela<frmEditor>();
        editor.abrir(resultados_, documento_.boleto(), caminho);
        mdiMain::instancia().addJanela(editor);
    }
}

// --- saving

void frmTramador::salvarBoleto() {
    terminaEdicao();
    std::string motivo;
    const bool salvou = guarded("frmTramador.salvarBoleto", [&] {
        const mestres::Contagem contagem = mestres::conta(mestres::acha(documento_));
        if (contagem.a == 0 && contagem.b == 0) {
            mensagem::mostra(QStringLiteral("Não há dados!"), Icone::Exclamacao);
            return;
        }
        try {
            const ArquivoTemporario temporario;
            salva(temporario.caminho());
        } catch (const Error& erro) {
            motivo = erro.description();
            throw;
        }
    });
    status(QStringLiteral("Pronto"));
    if (!salvou) {
        documento_.estado.salvo = false;
        mensagem::mostra(QStringLiteral("Falha ao tentar salvar o boleto!"), Icone::Exclamacao, {},
                         paraQt(motivo));
    }
}

void frmTramador::salva(const std::filesystem::path& temporario) {
    QString nome = juntoDe(documento_.estado.arquivo, paraQt(nomeDoArquivo::proposta(documento_)));
    bool valido = false;
    clsValidador validador;
    {
        const Espera espera;
        frmMensagem progresso;
        progresso.setMsg(QStringLiteral("Aguarde ... "), QStringLiteral("Construindo Boleto"), 0,
                         figuraDocumento);
        status(QStringLiteral("Construindo boleto ... "));
        documento_.estado.salvo = false;
        montaDocumento(documento_).save(temporario, true);
        progresso.setMsg(QStringLiteral("Aguarde ... "), QStringLiteral("Validando Boleto"), 0,
                         figuraValidador);
        status(QStringLiteral("Validando boleto ..."));
        const std::shared_ptr<const clsBoleto> layout(documento_.boleto(), &documento_.layout());
        valido = validador.isValido(temporario, layout);
    }
    const bool grave =
        valido || mensagem::perguntaAcimaDeTudo(
                      QStringLiteral("Boleto inválido!\n\nDeseja salvar assim mesmo?"), Icone::Critico);
    if (grave) {
        const QString destino = FileOperations::salvaDocumento(this, nome);
        if (!destino.trimmed().isEmpty()) {
            grava(temporario, destino);
        }
    }
    if (!valido) {
        mostraResultado(validador.getResultado());
    }
}

void frmTramador::grava(const std::filesystem::path& temporario, const QString& destino) {
    {
        const Espera espera;
        frmMensagem progresso;
        progresso.setMsg(QStringLiteral("Arquivo ") + destino, QStringLiteral("Salvando Boleto"), 0,
                         figuraDocumento);
        status(QStringLiteral("Salvando boleto ... "));
        gravacao::grava(temporario, paraCaminho(destino));
    }
    documento_.estado.arquivo = paraUtf8(destino);
    documento_.estado.salvo = true;
    documentoSalvo();
    painel1_->setText(destino);
    ZOrder();
    status(QStringLiteral("Pronto"));
    mensagem::mostra(QStringLiteral("Salvo com sucesso"), Icone::Informacao);
}

void frmTramador::mostraResultado(const std::shared_ptr<const Resultados>& resultados) {
    auto& relatorio = criaJanela<frmBrowser>();
    relatorio.abrir(resultados, tituloDoResultado(), paraQt(documento_.estado.arquivo));
    mdiMain::instancia().addJanela(relatorio);
}

} // namespace tv
