// voro completion: what a shell needs to complete the program's commands and options, made from its tables.

#include "Command.h"
#include "Output.h"

#include <array>

namespace voro {

namespace {

using Lines = QByteArray (*)();

/** A text as one word of a shell. */
QByteArray quoted(QByteArray text)
{
    return '\'' + text.replace('\'', "'\\''") + '\'';
}

QByteArray wordsOf(const CommandHelp &help)
{
    return help.words ? help.words().join(' ') : QByteArray();
}

QByteArray optionsOf(const CommandHelp &help)
{
    return namesOf(help.options).join(' ') + " --help";
}

/**
 * Lines of a `case` over "COMMAND OPTION" for the options whose values can be counted; `complete` is what gets them, as
 * one word or as several.
 */
QByteArray valueCases(const char *complete, bool isOneWord)
{
    QByteArray text;
    for (const Command *command : allCommands()) {
        for (const Option &option : command->help.options) {
            if (option.values) {
                const QByteArray values = option.values().join(' ');
                text += QByteArray("    '") + command->help.name + ' ' + option.name + "') " + complete + ' '
                        + (isOneWord ? quoted(values) : values) + "; return ;;\n";
            }
        }
    }
    return text;
}

QByteArray bash()
{
    QByteArray commands;
    QByteArray cases;
    for (const Command *command : allCommands()) {
        const CommandHelp &help = command->help;
        commands += QByteArray(help.name) + ' ';
        cases += QByteArray("    ") + help.name + ") options=" + quoted(optionsOf(help))
                 + " words=" + quoted(wordsOf(help)) + " ;;\n";
    }
    return "_voro_words() { COMPREPLY=($(compgen -W \"$1\" -- \"${COMP_WORDS[COMP_CWORD]}\")); }\n"
           "_voro()\n{\n"
           "    local options= words=\n"
           "    if [ \"$COMP_CWORD\" -eq 1 ]; then\n"
           "        _voro_words "
           + quoted(commands + "help --help --version")
           + "\n        return\n    fi\n"
             "    case \"${COMP_WORDS[1]} ${COMP_WORDS[COMP_CWORD-1]}\" in\n"
           + valueCases("_voro_words", true)
           + "    esac\n"
             "    case \"${COMP_WORDS[1]}\" in\n"
           + cases + "    help) words=" + quoted(commands)
           + " ;;\n    esac\n"
             "    case \"${COMP_WORDS[COMP_CWORD]}\" in\n"
             "    -*) _voro_words \"$options\" ;;\n"
             "    *) _voro_words \"$words\" ;;\n"
             "    esac\n}\n"
             "complete -o default -F _voro voro\n";
}

QByteArray zsh()
{
    QByteArray commands;
    QByteArray cases;
    for (const Command *command : allCommands()) {
        const CommandHelp &help = command->help;
        commands += "        " + quoted(QByteArray(help.name) + ':' + help.summary) + '\n';
        cases +=
            QByteArray("    ") + help.name + ") options=(" + optionsOf(help) + ") others=(" + wordsOf(help) + ") ;;\n";
    }
    return "#compdef voro\n\n"
           "_voro()\n{\n"
           "    local -a commands options others\n"
           "    commands=(\n"
           + commands
           + "    )\n"
             "    if (( CURRENT == 2 )); then\n"
             "        _describe command commands\n"
             "        return\n"
             "    fi\n"
             "    case \"$words[2] $words[CURRENT-1]\" in\n"
           + valueCases("compadd --", false)
           + "    esac\n"
             "    case $words[2] in\n"
           + cases
           + "    esac\n"
             "    if [[ $PREFIX == -* ]]; then\n"
             "        compadd -- $options\n"
             "    elif (( $#others )); then\n"
             "        compadd -- $others\n"
             "    else\n"
             "        _files\n"
             "    fi\n}\n\n"
             "_voro \"$@\"\n";
}

QByteArray fish()
{
    QByteArray text;
    for (const Command *command : allCommands()) {
        const CommandHelp &help = command->help;
        const QByteArray within = QByteArray("complete -c voro -n '__fish_seen_subcommand_from ") + help.name + "'";
        text += QByteArray("complete -c voro -f -n __fish_use_subcommand -a ") + help.name + " -d "
                + quoted(help.summary) + '\n';
        if (help.words) {
            text += within + " -f -a " + quoted(wordsOf(help)) + '\n';
        }
        for (const Option &option : help.options) {
            text += within + " -l " + QByteArray(option.name).mid(2) + " -d " + quoted(option.description);
            if (option.values) {
                text += " -x -a " + quoted(option.values().join(' '));
            } else if (option.placeholder) {
                text += " -r";
            }
            text += '\n';
        }
    }
    return text;
}

struct Shell {
    const char *name;
    Lines lines;
};

constexpr std::array Shells{Shell{"bash", bash}, Shell{"zsh", zsh}, Shell{"fish", fish}};

ExitStatus runCompletion(const Arguments &arguments)
{
    if (arguments.operands().size() != 1) {
        throw UsageError{QStringLiteral("bash, zsh or fish is missing")};
    }
    const QByteArray &name = arguments.operands().first();
    for (const Shell &shell : Shells) {
        if (name == shell.name) {
            print(shell.lines());
            return Success;
        }
    }
    refuseUnknown("shell", name, namesOf(Shells));
}

} // namespace

const Command CompletionCommand{
    .help =
        {
            .name = "completion",
            .synopsis = "bash|zsh|fish",
            .summary = "prints what a shell completes commands and options with",
            .details = "Prints the lines that let a shell complete the program's commands, options and their values. "
                       "Packages\ninstall them; otherwise:\n\n"
                       "  bash    source <(voro completion bash)\n"
                       "  zsh     voro completion zsh >DIR/_voro, where DIR is in $fpath\n"
                       "  fish    voro completion fish | source",
            .options = {},
            .words = [] { return namesOf(Shells); },
        },
    .run = runCompletion,
};

} // namespace voro
