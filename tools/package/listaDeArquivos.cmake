# Writes the list of the files that are shipped, as checksum tools write it: the set-up of a user's folder goes by it.
# cmake -DPASTA=<folder> -DLISTA=<file to write> -P listaDeArquivos.cmake
file(GLOB_RECURSE nomes RELATIVE "${PASTA}" "${PASTA}/*")
list(FILTER nomes EXCLUDE REGEX "(^|/)\\.")
list(SORT nomes)
set(texto "")
foreach(nome IN LISTS nomes)
    file(SHA256 "${PASTA}/${nome}" soma)
    string(APPEND texto "${soma}  ${nome}\n")
endforeach()
file(WRITE "${LISTA}" "${texto}")
