// Unsaved work of programs that did not come to their end, and the start behind them.
#include "app/windows/recuperacao.h"

#include "app/windows/ProgramaInteiro.h"
#include "common/GuardaDeTrabalho.h"
#include "common/windows/Grade.h"
#include "common/windows/textoQt.h"
#include "composer/EscritorBoleto.h"
#include "composer/windows/frmTramador.h"
#include "editor/windows/CaixaXML.h"
#include "editor/windows/frmEditor.h"
#include "windows/GuardaDeTeste.h"

#include <QTest>

#include <csignal>
#include <unistd.h>

namespace tv {
namespace {

namespace fs = std::filesystem;

using test::Caixas;
using test::deixaPassar;
using test::espera;
using test::GuardaApressada;
using test::guardados;
using test::occurrences;
using test::principalVisivel;
using test::quando;
using ::testing::KilledBySignal;

QString q(const char* texto) {
    return QString::fromUtf8(texto);
}

constexpr const char* layoutDoTeste = "arquivoposicao_4_01";
constexpr const char* textoDoArquivo = "<?xml version=\"1.0\" encoding=\"ISO-8859-1\"?>\n<a>\xE7</a>\n";

template<typename Tipo>
Tipo* aberta() {
    for (Janela* uma : mdiMain::instancia().janelas()) {
        if (auto* achada = dynamic_cast<Tipo*>(uma)) {
            return achada;
        }
    }
    return nullptr;
}

class Recuperacao : public test::ProgramaInteiro {
protected:
    Recuperacao() {
        programa.catalogoDistribuido();
        programa.escreve("a.xml", textoDoArquivo);
    }

    static const std::shared_ptr<const clsBoleto>& layoutAberto() {
        return objTramadorValidador->getBoletos().Item(layoutDoTeste);
    }
    /// A composer with a sound document and a row under way that the rules would not take.
    frmTramador& compoe() const {
        mdiMain::instancia().abrirTramador(layoutAberto());
        frmTramador& janela = *aberta<frmTramador>();
        janela.abrirBoleto(caminhoQt(programa.caminho() / "amostras" / layoutDoTeste / "valido_pequeno.xml"));
        janela.addRow();
        janela.gradeAtual().modelo().setValor(janela.gradeAtual().linhaAtiva(), "cnpj", std::string("12"));
        return janela;
    }
    frmEditor& edita() const {
        auto& janela = criaJanela<frmEditor>();
        janela.abrir(nullptr, layoutAberto(), caminhoQt(programa.caminho() / "a.xml"));
        mdiMain::instancia().addJanela(janela);
        janela.findChild<CaixaXML*>(q("txtXML"))->setSelText(u"<!-- não salvo -->");
        return janela;
    }
    /// The program's windows with unsaved work, which a signal ends as soon as all of it is kept. What they
    /// held stands in files for the test.
    void trabalhaEMorre(std::size_t trabalhos) const {
        const GuardaApressada apressada;
        biblioteca::iniciaSistema();
        mdiMain::instancia().show();
        const frmTramador& tramador = compoe();
        programa.escreve("xml", montaDocumento(tramador.documento()).xml());
        if (trabalhos > 1) {
            const frmEditor& editor = edita();
            programa.escreve("texto", paraUtf8(editor.findChild<CaixaXML*>(q("txtXML"))->toPlainText()));
        }
        static_cast<void>(espera([&] { return guardados().size() == trabalhos; }));
        deixaPassar();
        ::kill(::getpid(), SIGKILL);
    }
    /// A work that a program which is gone has left behind.
    static fs::path deixa(const EtiquetaDeTrabalho& etiqueta, const std::string& conteudo) {
        PastaDeGuarda morta(PastaDeGuarda::doPrograma()->pasta());
        fs::path lugar = morta.novoLugar();
        const PecasDeTrabalho pecas{std::make_shared<const std::string>(conteudo)};
        const auto moldura = arquivoDeTrabalho::moldura(etiqueta, pecas);
        files::writeAll(lugar, moldura.inicio + conteudo + moldura.fim);
        return lugar;
    }
    /// The whole program from its start on; `acao` runs when the main window stands and `pronto` holds, then
    /// the main window is closed.
    static void executa(const std::function<bool()>& pronto, const std::function<void()>& acao) {
        quando([&] { return principalVisivel() && pronto(); },
               [&] {
                   acao();
                   mdiMain::instancia().close();
               });
        EXPECT_EQ(biblioteca::executa(), EXIT_SUCCESS);
    }
    void inicia() const {
        biblioteca::iniciaSistema();
        oLogger->setLevel(library::level::all);
        static_cast<void>(oLogger->getFilename()); // the header is written when the file is asked for
        mdiMain::instancia().show();
    }
    static fs::path pasta() { return PastaDeGuarda::doPrograma()->pasta(); }
};

TEST_F(Recuperacao, AKilledProgramsWorkComesBackByteForByteAtTheNextStart) {
    EXPECT_EXIT(trabalhaEMorre(2), KilledBySignal(SIGKILL), "");
    ASSERT_EQ(guardados().size(), 2U);
    Caixas caixas{q("Sim"), q("Não"), q("OK"), q("Não")}; // one is about the row under way
    bool comPrincipal = false;
    caixas.aoVer = [&](QMessageBox&) { comPrincipal = comPrincipal || principalVisivel(); };
    executa([] { return mdiMain::instancia().janelas().Count() == 2; },
            [&] {
                ASSERT_NE(aberta<frmTramador>(), nullptr);
                ASSERT_NE(aberta<frmEditor>(), nullptr);
                const frmTramador& tramador = *aberta<frmTramador>();
                EXPECT_EQ(montaDocumento(tramador.documento()).xml(), programa.le("xml"));
                EXPECT_NE(programa.le("xml").find("<cnpj>12</cnpj>"), std::string::npos);
                EXPECT_FALSE(tramador.documento().estado.salvo);
                const frmEditor& editor = *aberta<frmEditor>();
                EXPECT_EQ(paraUtf8(editor.findChild<CaixaXML*>(q("txtXML"))->toPlainText()),
                          programa.le("texto"));
                EXPECT_FALSE(editor.salvo());
                EXPECT_EQ(programa.le("a.xml"), textoDoArquivo) << "the file itself is as it was";
                EXPECT_EQ(guardados().size(), 2U) << "kept until it is saved or refused";
                aberta<frmEditor>()->closeWindow();
                aberta<frmTramador>()->closeWindow();
            });
    ASSERT_EQ(caixas.vistas().size(), 4U);
    EXPECT_TRUE(comPrincipal);
    EXPECT_TRUE(caixas.vistas()[0].texto.startsWith(
        q("O programa não foi encerrado normalmente, e há trabalho que não foi salvo:")));
    EXPECT_TRUE(caixas.vistas()[0].texto.contains(q("a.xml, guardado em 14/03/2026 10:00:00")));
    EXPECT_EQ(caixas.vistas()[0].botoes, (QStringList{q("Sim"), q("Não")}));
    EXPECT_EQ(caixas.vistas()[1].texto, q("Deseja salvar o boleto?"));
    EXPECT_FALSE(fs::exists(pasta())) << "closed properly, nothing is left";
}

TEST_F(Recuperacao, KilledAgainBeforeTheAnswerItIsOfferedAgain) {
    EXPECT_EXIT(trabalhaEMorre(1), KilledBySignal(SIGKILL), "");
    EXPECT_EXIT(
        {
            Caixas caixas{q("Sim")};
            caixas.aoVer = [](QMessageBox&) { ::kill(::getpid(), SIGKILL); };
            static_cast<void>(biblioteca::executa());
        },
        KilledBySignal(SIGKILL), "");
    EXPECT_EQ(guardados().size(), 1U);
    const Caixas caixas{q("Sim"), q("OK"), q("Não")};
    executa([] { return mdiMain::instancia().janelas().Count() == 1; },
            [&] { EXPECT_EQ(montaDocumento(aberta<frmTramador>()->documento()).xml(), programa.le("xml")); });
}

TEST_F(Recuperacao, RefusedWorkIsSetAsideAndTheNextStartIsSilent) {
    EXPECT_EXIT(trabalhaEMorre(1), KilledBySignal(SIGKILL), "");
    {
        const Caixas caixas{q("Não")};
        executa([] { return !guardados(".recusado").empty(); },
                [] { EXPECT_EQ(mdiMain::instancia().janelas().Count(), 0U); });
    }
    EXPECT_EQ(guardados().size(), 0U);
    EXPECT_EQ(guardados(".recusado").size(), 1U);
    const Caixas semPergunta;
    executa([] { return true; }, [] { deixaPassar(); });
}

TEST_F(Recuperacao, WithNothingLeftBehindNothingHappens) {
    inicia();
    const std::string antes = programa.registro();
    const Caixas semPergunta;
    recuperacao::oferece();
    EXPECT_EQ(programa.registro(), antes);
    EXPECT_FALSE(fs::exists(pasta()));
}

TEST_F(Recuperacao, ADamagedFileIsSkippedWithALineInTheLog) {
    inicia();
    deixa({"frmTramador", layoutDoTeste, "", clock::now()}, "x");
    std::string bytes = files::readAll(guardados().at(0));
    bytes[bytes.size() / 2] ^= 1;
    files::writeAll(guardados().at(0), bytes);
    const Caixas semPergunta;
    recuperacao::oferece();
    EXPECT_EQ(occurrences(programa.registro(), "O trabalho guardado está danificado[5]"), 1U);
    EXPECT_EQ(guardados(".danificado").size(), 1U);
    recuperacao::oferece();
    EXPECT_EQ(occurrences(programa.registro(), "O trabalho guardado está danificado[5]"), 1U);
}

TEST_F(Recuperacao, WorkThatCannotComeBackIsToldAndSetAside) {
    inicia();
    deixa({"frmTramador", layoutDoTeste, "", clock::now()}, "de outra forma");
    deixa({"frmTramador", "layout_que_saiu", "/pasta/b.xml", clock::now()}, "x");
    deixa({"frmOutra", layoutDoTeste, "", clock::now()}, "x");
    Caixas caixas{q("Sim"), q("OK")};
    recuperacao::oferece();
    ASSERT_EQ(caixas.vistas().size(), 2U);
    EXPECT_TRUE(caixas.vistas()[1].texto.startsWith(q("Não foi possível recuperar:")));
    EXPECT_TRUE(caixas.vistas()[1].texto.contains(q("layout_que_saiu\n/pasta/b.xml")));
    EXPECT_EQ(guardados(".recusado").size(), 3U);
    EXPECT_TRUE(espera([] { return !mdiMain::instancia().temFilhas(); }));
}

TEST_F(Recuperacao, TheWorkOfAProgramThatRunsIsNotOffered) {
    inicia();
    PastaDeGuarda viva(pasta());
    const fs::path lugar = viva.novoLugar();
    files::writeAll(lugar, "dela");
    const Caixas semPergunta;
    recuperacao::oferece();
    EXPECT_EQ(files::readAll(lugar), "dela");
    viva.libera(lugar);
}

TEST_F(Recuperacao, ALongListIsCutShort) {
    inicia();
    for (int i = 0; i < 10; ++i) {
        deixa({"frmEditor", layoutDoTeste, "/pasta/" + std::to_string(i) + ".xml", clock::now()}, "x");
    }
    Caixas caixas{q("Não")};
    recuperacao::oferece();
    ASSERT_EQ(caixas.vistas().size(), 1U);
    EXPECT_TRUE(caixas.vistas()[0].texto.contains(q("e mais 2.")));
    EXPECT_EQ(guardados(".recusado").size(), 10U);
}

} // namespace
} // namespace tv
