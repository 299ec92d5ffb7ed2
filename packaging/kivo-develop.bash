# Completion of kivo-develop for bash.

_kivo_develop() {
    local word=${COMP_WORDS[COMP_CWORD]}
    local before=${COMP_WORDS[COMP_CWORD - 1]}
    # "--type=T" arrives as three words.
    if [ "$before" = "=" ]; then
        before=${COMP_WORDS[COMP_CWORD - 2]}
    elif [ "$word" = "=" ]; then
        before=${COMP_WORDS[COMP_CWORD - 1]}
        word=
    fi
    local IFS=$'\n'
    case $before in
        -t | --type)
            mapfile -t COMPREPLY < <(compgen -W $'KIVO\nDSLR\nACTION\nQUAD\nMIX\nTILT' -- "${word^^}")
            ;;
        -e | --effect)
            mapfile -t COMPREPLY < <(compgen \
                -W $'Normal\nFisheye\nConcave\nBW\nBeach\nFall\nSepia\nNegative\nEdge\nMirror' \
                -- "${word^}")
            ;;
        --batch)
            mapfile -t COMPREPLY < <(compgen -d -- "$word")
            ;;
        *)
            if [[ $word == -* ]]; then
                mapfile -t COMPREPLY < <(compgen -W \
                    $'--type\n--effect\n--hdr\n--secondary\n--output\n--batch\n--sheet\n--version\n--help' \
                    -- "$word")
            else
                mapfile -t COMPREPLY < <(
                    compgen -d -- "$word"
                    compgen -f -X '!*.@(jpg|jpeg|png|ppm|JPG|JPEG|PNG|PPM)' -- "$word"
                )
            fi
            ;;
    esac
}

complete -o filenames -F _kivo_develop kivo-develop
