# Completion of kivo-develop for bash.

# Those of the words after the first that begin with it, in capitals or not.
_kivo_develop_words() {
    local begun=${1,,} word
    shift
    for word in "$@"; do
        [[ ${word,,} != "$begun"* ]] || echo "$word"
    done
}

_kivo_develop_pictures() {
    compgen -d -- "$1"
    compgen -f -- "$1" | grep -iE '\.(jpe?g|png|ppm)$'
}

_kivo_develop() {
    local word=${COMP_WORDS[COMP_CWORD]}
    local before=${COMP_WORDS[COMP_CWORD - 1]}
    # "--type=T" arrives as three words.
    if [ "$before" = "=" ]; then
        before=${COMP_WORDS[COMP_CWORD - 2]}
    elif [ "$word" = "=" ]; then
        word=
    fi
    case $before in
        -t | --type)
            mapfile -t COMPREPLY < <(_kivo_develop_words "$word" KIVO DSLR ACTION QUAD MIX TILT)
            ;;
        -e | --effect)
            mapfile -t COMPREPLY < <(_kivo_develop_words "$word" \
                Normal Fisheye Concave BW Beach Fall Sepia Negative Edge Mirror)
            ;;
        --batch)
            mapfile -t COMPREPLY < <(compgen -d -- "$word")
            ;;
        *)
            if [[ $word == -* ]]; then
                mapfile -t COMPREPLY < <(_kivo_develop_words "$word" --type --effect --hdr \
                    --secondary --output --batch --sheet --version --help)
            elif [[ $before == @(-o|--output) && " ${COMP_WORDS[*]} " == *" --batch"* ]]; then
                mapfile -t COMPREPLY < <(compgen -d -- "$word")
            else
                mapfile -t COMPREPLY < <(_kivo_develop_pictures "$word")
            fi
            ;;
    esac
}

complete -o filenames -F _kivo_develop kivo-develop
