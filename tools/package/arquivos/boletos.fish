# Completion of boletos for fish.
set -l comandos validar exportar importar layouts

function __boletos_layouts
    boletos layouts 2>/dev/null | cut -f 1
end

complete -c boletos -n "not __fish_seen_subcommand_from $comandos" -f -a "validar" -d "verifica arquivos"
complete -c boletos -n "not __fish_seen_subcommand_from $comandos" -f -a "exportar" -d "escreve um documento em planilhas"
complete -c boletos -n "not __fish_seen_subcommand_from $comandos" -f -a "importar" -d "faz um documento de uma planilha"
complete -c boletos -n "not __fish_seen_subcommand_from $comandos" -f -a "layouts" -d "mostra os layouts"
complete -c boletos -s h -l help -d "mostra a ajuda"
complete -c boletos -n "not __fish_seen_subcommand_from $comandos" -l version -d "mostra a versão"
complete -c boletos -n "__fish_seen_subcommand_from $comandos" -l pasta -x -a "(__fish_complete_directories)" -d "pasta da aplicação"
complete -c boletos -n "__fish_seen_subcommand_from validar exportar importar" -l layout -x -a "(__boletos_layouts)" -d layout
complete -c boletos -n "__fish_seen_subcommand_from validar" -l formato -x -a "texto json xml html junit" -d "formato do relatório"
complete -c boletos -n "__fish_seen_subcommand_from validar" -l saida -r -d "arquivo do relatório"
complete -c boletos -n "__fish_seen_subcommand_from validar" -l jobs -x -d "arquivos ao mesmo tempo"
