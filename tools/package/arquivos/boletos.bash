# Completion of boletos for bash.

# The layouts of the catalog; in the folder that the line names with --pasta, if it does.
_boletos_layouts() {
    local i
    for ((i = 1; i < ${#words[@]} - 1; i++)); do
        if [[ ${words[i]} == --pasta ]]; then
            boletos layouts --pasta "${words[i + 1]}" 2>/dev/null | cut -f 1
            return
        fi
    done
    boletos layouts 2>/dev/null | cut -f 1
}

_boletos() {
    local cur prev words=("${COMP_WORDS[@]}") comando=${COMP_WORDS[1]-}
    cur=${COMP_WORDS[COMP_CWORD]}
    prev=${COMP_WORDS[COMP_CWORD - 1]}
    COMPREPLY=()
    if ((COMP_CWORD == 1)); then
        mapfile -t COMPREPLY < <(compgen -W "validar exportar importar layouts --help --version" -- "$cur")
        return
    fi
    case $prev in
    --layout)
        mapfile -t COMPREPLY < <(compgen -W "$(_boletos_layouts)" -- "$cur")
        return
        ;;
    --formato)
        mapfile -t COMPREPLY < <(compgen -W "texto json xml html junit" -- "$cur")
        return
        ;;
    --pasta)
        compopt -o filenames 2>/dev/null
        mapfile -t COMPREPLY < <(compgen -d -- "$cur")
        return
        ;;
    --jobs)
        mapfile -t COMPREPLY < <(compgen -W "1 2 4 8" -- "$cur")
        return
        ;;
    --saida)
        compopt -o filenames 2>/dev/null
        mapfile -t COMPREPLY < <(compgen -f -- "$cur")
        return
        ;;
    esac
    if [[ $cur == -* ]]; then
        local opcoes="--pasta --help"
        [[ $comando == layouts ]] || opcoes+=" --layout"
        [[ $comando == validar ]] && opcoes+=" --formato --saida --jobs"
        mapfile -t COMPREPLY < <(compgen -W "$opcoes" -- "$cur")
        return
    fi
    local padrao
    case $comando in
    validar | exportar) padrao='!*.[xX][mM][lL]' ;;
    importar) padrao='!*.[xX][lL][sS]' ;;
    *) return ;;
    esac
    compopt -o filenames 2>/dev/null
    mapfile -t COMPREPLY < <(compgen -d -- "$cur"; compgen -f -X "$padrao" -- "$cur")
}

complete -F _boletos boletos
