# zsh -f complete.zsh COMPLETIONS FOUND LINE: has an interactive zsh complete a line, and writes what it offers to FOUND.
zmodload zsh/zpty
zpty shell zsh -f -i
zpty -w shell "unset zle_bracketed_paste; fpath=(${(q)1} \$fpath); autoload -Uz compinit; compinit -u -D"
zpty -w shell 'report() {
    local -a found
    builtin compadd -O found "$@"
    (( $#found )) && print -rl -- $found >>$OUT
    builtin compadd "$@"
}'
# The line is done with when the widget behind it has run.
zpty -w shell "functions[compadd]=\$functions[report]; OUT=${(q)2}; done-with() { : >\$OUT.done }; zle -N done-with"
zpty -w shell 'bindkey "^I" complete-word "^X" done-with'
sleep 0.5
zpty -w -n shell "$3"$'\t\C-x'
for ((i = 0; i < 300; ++i)); do
    [[ -e $2.done ]] && break
    sleep 0.1
done
zpty -d shell
