# Says of declarations what the project's conventions say of them, where the header says nothing: a property has a getter, perhaps
# a setter and a signal, xChanged() tells that x() changed, xQml() is x() as a variant. Every line stays a line of its own.

function add(text)
{
    if (!isDocumented) {
        sub(/^ */, "&/** " text " */ ")
    }
}

# The name of the function that is declared.
function declared(    name)
{
    name = $0
    sub(/\(.*/, "", name)
    sub(/.*[ *&]/, "", name)
    return name
}

# The getter that a header documents: the typed one.
function getter(name)
{
    sub(/Qml$/, "", name)
    return name
}

# What follows a keyword of a property.
function word(keyword,    text)
{
    if (!match($0, " " keyword " +[A-Za-z]+")) {
        return ""
    }
    text = substr($0, RSTART, RLENGTH)
    sub(/.* /, "", text)
    return text
}

/^ *\/\*\*/ { isComment = 1 }
isComment {
    isDocumented = 1
    isComment = !/\*\//
    print
    next
}

# A property may stand on several lines.
/^ *Q_PROPERTY\(/ {
    for (rest = ""; gsub(/\(/, "(") != gsub(/\)/, ")") && (getline following) > 0; rest = rest "\n") {
        sub(/^ */, "", following)
        $0 = $0 " " following
    }
    text = "Read by " getter(word("READ")) "()"
    text = text (word("WRITE") ? ", set by " word("WRITE") "()" : "")
    text = text (word("NOTIFY") ? ", reported by " word("NOTIFY") "()." : ".")
    add(text)
    $0 = $0 rest
}
/^ *enum [A-Z]/ { add("The values.") }
/^ *(Q_REVISION\([0-9, ]*\) )?void [a-z][A-Za-z]*\(.*const QVariant &/ { add("The same with the value in a variant, for QML.") }
/^ *(Q_REVISION\([0-9, ]*\) )?void [a-z][A-Za-z]*Changed\(/ {
    name = declared()
    sub(/Changed$/, "", name)
    add(FILENAME ~ /\/qml\// ? "The property " name " changed." : name "() changed.")
}
/^ *QVariant [a-z][A-Za-z]*Qml\(\) const;/ { add(getter(declared()) "() as a variant, for QML.") }
/ override;/ { add("Overrides what Qt has.") }
# Elements are used by their properties.
FILENAME ~ /\/qml\// && /^    [A-Za-z].*\(.*(;|\})$/ { add("See the property.") }

{
    isDocumented = 0
    print
}
