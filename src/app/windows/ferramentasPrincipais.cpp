#include "app/windows/ferramentasPrincipais.h"

#include "app/windows/Ferramentas.h"
#include "app/windows/frmObjetos.h"

#include <QAction>
#include <QKeySequence>

#include <array>

namespace tv {

namespace {

using namespace ferramenta;

struct Definicao {
    QLatin1String identificador;
    const char16_t* caption;
    const char16_t* imagem; ///< Key of the shared picture; empty for none.
    Ferramentas::Tipo tipo = Ferramentas::Tipo::Botao;
};

constexpr std::array definicoes{
    Definicao{tramadorMenuID, u"&Tramador", u"", Ferramentas::Tipo::Menu},
    Definicao{validadorMenuID, u"&Validador", u"", Ferramentas::Tipo::Menu},
    Definicao{janelasID, u"&Janelas", u"", Ferramentas::Tipo::Menu},
    Definicao{hlpAjuda, u"&Ajuda", u"", Ferramentas::Tipo::Menu},
    Definicao{appClose, u"&Sair", u"imgSair"},
    Definicao{hlpContent, u"&Conteúdo", u"imgAjuda"},
    Definicao{atualizacaoID, u"Atualização", u"imgAtualizacao"},
    Definicao{hlpAbout, u"&Sobre ...", u"imgSobre"},
    Definicao{tramadorButtonID, u"Tramador", u"imgTramador"},
    Definicao{validadorButtonID, u"Validador", u"imgValidador"},
    Definicao{btnFrmCascata, u"&Cascata", u"imgCascata"},
    Definicao{btnFrmLadoaLadoHorizontal, u"Lado a Lado (&Horizontal)", u"imgHorizontal"},
    Definicao{btnFrmLadoaLadoVertical, u"Lado a Lado (&Vertical)", u"imgVertical"},
    Definicao{btnFecharJanelas, u"&Fechar Janelas", u"imgFecharJanelas"},
    Definicao{separatorID, u"Separador", u"", Ferramentas::Tipo::Separador},
    Definicao{btnImportacao, u"&Importação", u""},
};

/// An empty identifier stands for a separator.
struct Lugar {
    QLatin1String onde;
    QLatin1String identificador;
};

constexpr QLatin1String separador{};

constexpr std::array naBarraDeMenus{tramadorMenuID, validadorMenuID, janelasID, hlpAjuda};
constexpr std::array naBarra{tramadorButtonID, validadorButtonID, separador, hlpContent, separador, appClose};
constexpr std::array nosMenus{
    Lugar{hlpAjuda, hlpContent},
    Lugar{hlpAjuda, atualizacaoID},
    Lugar{hlpAjuda, separador},
    Lugar{hlpAjuda, hlpAbout},
    Lugar{janelasID, btnFrmCascata},
    Lugar{janelasID, btnFrmLadoaLadoHorizontal},
    Lugar{janelasID, btnFrmLadoaLadoVertical},
    Lugar{janelasID, separador},
    Lugar{janelasID, btnFecharJanelas},
};

void define(Ferramentas& ferramentas) {
    for (const Definicao& definicao : definicoes) {
        const QString imagem = QString::fromUtf16(definicao.imagem);
        ferramentas.define({definicao.identificador, QString::fromUtf16(definicao.caption),
                            imagem.isEmpty() ? QIcon() : frmObjetos::imagem(imagem)},
                           definicao.tipo);
    }
}

} // namespace

void montaFerramentas(Ferramentas& ferramentas) {
    define(ferramentas);
    for (const QLatin1String menu : naBarraDeMenus) {
        ferramentas.incluiNaBarraDeMenus(menu);
    }
    for (const QLatin1String identificador : naBarra) {
        if (identificador.isEmpty()) {
            ferramentas.separaNaBarra();
        } else {
            ferramentas.incluiNaBarra(identificador);
        }
    }
    for (const Lugar& lugar : nosMenus) {
        if (lugar.identificador.isEmpty()) {
            ferramentas.separaNoMenu(lugar.onde);
        } else {
            ferramentas.incluiNoMenu(lugar.onde, lugar.identificador);
        }
    }
    ferramentas.acao(hlpContent)->setShortcut(QKeySequence(Qt::Key_F1));
}

} // namespace tv
