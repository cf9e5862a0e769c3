# The packages' names, dependencies and descriptions.
set(CPACK_GENERATOR DEB TGZ)
set(CPACK_PACKAGE_NAME tramador-validador)
set(CPACK_PACKAGE_VERSION ${PROJECT_VERSION})
set(CPACK_PACKAGE_CONTACT "Tramador e Validador maintainers <maintainers@users.noreply.c-seed-312e87ba.example>")
set(CPACK_PACKAGE_VENDOR "Tramador e Validador maintainers")
set(CPACK_PROJECT_CONFIG_FILE "${CMAKE_CURRENT_LIST_DIR}/gerador.cmake")
set(CPACK_STRIP_FILES ON)
set(CPACK_VERBATIM_VARIABLES ON)
set(CPACK_INSTALL_DEFAULT_DIRECTORY_PERMISSIONS
    OWNER_READ OWNER_WRITE OWNER_EXECUTE GROUP_READ GROUP_EXECUTE WORLD_READ WORLD_EXECUTE)

set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_RELEASE 1)
set(CPACK_DEBIAN_PACKAGE_SOURCE tramador-validador)
set(CPACK_DEBIAN_PACKAGE_MAINTAINER "${CPACK_PACKAGE_CONTACT}")
set(CPACK_DEBIAN_PACKAGE_HOMEPAGE "https://www.tramador-validador.example/")
set(CPACK_DEBIAN_PACKAGE_PRIORITY optional)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_PACKAGE_CONTROL_STRICT_PERMISSION ON)

set(CPACK_DEBIAN_COMANDOS_PACKAGE_NAME boletos)
set(CPACK_DEBIAN_COMANDOS_PACKAGE_SECTION text)
set(CPACK_DEBIAN_COMANDOS_PACKAGE_SUGGESTS "tramador-validador, libreoffice-calc")
set(CPACK_DEBIAN_COMANDOS_DESCRIPTION
"check XML files of fund positions from the command line
Confere arquivos XML de posição e de movimento de fundos e carteiras pelos
layouts de um catálogo: esquema, regras de campo, fórmulas e somas entre
campos. Escreve relatórios em texto, JSON, XML, HTML e JUnit, e troca
documentos com planilhas.

O pacote traz também o catálogo, os esquemas e as amostras, dos quais se faz a
pasta da aplicação de cada usuário. Não precisa de ambiente gráfico.")

# What the linker does not see: the shipped files, Qt's texts, fonts, and what opens links.
set(CPACK_DEBIAN_JANELAS_PACKAGE_NAME tramador-validador)
set(CPACK_DEBIAN_JANELAS_PACKAGE_SECTION misc)
string(JOIN ", " CPACK_DEBIAN_JANELAS_PACKAGE_DEPENDS
    "boletos (= ${PROJECT_VERSION}-${CPACK_DEBIAN_PACKAGE_RELEASE})"
    "qt6-translations-l10n"
    "fonts-dejavu-core"
    "fonts-liberation"
    "xdg-utils")
set(CPACK_DEBIAN_JANELAS_PACKAGE_RECOMMENDS "qt6-wayland")
set(CPACK_DEBIAN_JANELAS_PACKAGE_SUGGESTS "libreoffice-calc, cups-client")
set(CPACK_DEBIAN_JANELAS_DESCRIPTION
"compose and check XML files of fund positions
Programa para a retaguarda dos fundos de investimento. Monta os arquivos XML de
posição e de movimento que os padrões do mercado pedem, confere quantos forem
precisos e mostra as ocorrências em relatório e em lista que leva ao lugar no
arquivo.

Tem tramador, validador, editor de XML e troca de documentos com planilhas. Um
arquivo de catálogo descreve todos os layouts. Cada usuário trabalha numa pasta
própria, feita na primeira partida.")

include(CPack)
