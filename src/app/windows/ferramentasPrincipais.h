#pragma once

#include <QLatin1String>

namespace tv {

class Ferramentas;

/// The vocabulary of the main window: the identifiers of its tools, and the beginnings of those that are
/// made while the program runs.
namespace ferramenta {

inline constexpr QLatin1String tramadorMenuID{"tramadorMenuID"};
inline constexpr QLatin1String validadorMenuID{"validadorMenuID"};
inline constexpr QLatin1String janelasID{"janelasID"};
inline constexpr QLatin1String hlpAjuda{"hlpAjuda"};
inline constexpr QLatin1String appClose{"appClose"};
inline constexpr QLatin1String hlpContent{"hlpContent"};
inline constexpr QLatin1String atualizacaoID{"atualizacaoID"};
inline constexpr QLatin1String hlpAbout{"hlpAbout"};
inline constexpr QLatin1String tramadorButtonID{"tramadorButtonID"};
inline constexpr QLatin1String validadorButtonID{"validadorButtonID"};
inline constexpr QLatin1String btnFrmCascata{"btnFrmCascata"};
inline constexpr QLatin1String btnFrmLadoaLadoHorizontal{"btnFrmLadoaLadoHorizontal"};
inline constexpr QLatin1String btnFrmLadoaLadoVertical{"btnFrmLadoaLadoVertical"};
inline constexpr QLatin1String btnFecharJanelas{"btnFecharJanelas"};
inline constexpr QLatin1String separatorID{"separatorID"};
/// Stands nowhere and does nothing.
inline constexpr QLatin1String btnImportacao{"btnImportacao"};

/// Followed by a layout's tag in capital letters.
inline constexpr QLatin1String tramador_{"tramador_"};
inline constexpr QLatin1String validador_{"validador_"};
/// Followed by a window's number of five digits.
inline constexpr QLatin1String janela_{"janela_"};

} // namespace ferramenta

/// Defines the main window's tools and puts them into its bands and menus. The two layout menus stay empty.
void montaFerramentas(Ferramentas& ferramentas);

} // namespace tv
