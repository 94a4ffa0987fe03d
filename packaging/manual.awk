# Makes a manual page of what a program says with --help, so that the two cannot differ.
# awk -v page=NAME -v section=N -v summary=TEXT -v version=TEXT -v date=TEXT -v related='NAME(N) ...' -f manual.awk

function escaped(text)
{
    gsub(/\\/, "\\e", text)
    gsub(/-/, "\\-", text)
    gsub(/'/, "\\(aq", text)
    sub(/^\./, "\\\\\\&.", text)
    return text
}

function heading(name)
{
    print ".SH " name
    isParagraph = 1
}

# What stands between its mark and its meaning in two columns.
function item(line,    at)
{
    sub(/^  /, "", line)
    at = match(line, /  +/)
    print ".TP\n.B " escaped(at ? substr(line, 1, at - 1) : line)
    if (at) {
        print escaped(substr(line, at + RLENGTH))
    }
    isItem = 1
}

BEGIN {
    print ".TH " toupper(page) " " section " \"" date "\" \"voro " version "\" \"Voro Multimedia\""
    heading("NAME")
    print escaped(page) " \\- " escaped(summary)
}

tolower($0) ~ /^usage: / {
    sub(/^[^ ]+ /, "")
    heading("SYNOPSIS")
    name = page
    sub(/^voro-/, "voro ", name)
    at = index($0, name " ") == 1 ? length(name) : index($0, " ") - 1
    at = at < 0 ? length($0) : at
    print ".B " escaped(substr($0, 1, at)) "\n" escaped(substr($0, at + 2))
    heading("DESCRIPTION")
    next
}

# Operands without a meaning of their own stand in the synopsis.
/^Arguments:$/ {
    exit
}

/^[A-Z][a-z]+:$/ {
    heading(toupper(substr($0, 1, length($0) - 1)))
    isItem = 0
    next
}

/^$/ {
    isBlank = 1
    next
}

/^  [^ ]/ {
    item($0)
    isBlank = isParagraph = 0
    next
}

/^   / && isItem && !isBlank {
    sub(/^ +/, "")
    print escaped($0)
    next
}

{
    if (isBlank && !isParagraph) {
        print ".PP"
    }
    sub(/^ +/, "")
    print escaped($0)
    isItem = isBlank = isParagraph = 0
}

END {
    heading("SEE ALSO")
    count = split(related, pages, " ")
    for (i = 1; i <= count; ++i) {
        if (pages[i] != page "(" section ")") {
            seen = seen (seen ? ",\n" : "") ".BR " pages[i]
        }
    }
    gsub(/\(/, " (", seen)
    gsub(/\),/, ") ,", seen)
    print seen
}
