# The checks behind check-cd.sh, on the product CD whose root is the environment variable RWCD.
#
# The files are read as slotrpt reads them, so that a finding here is a difference there: what a
# repeated section or key hides is not looked at.

BEGIN {
    folder = ENVIRON["RWCD"] "/rwise/ini/"
    checkConfiguration(folder "syscfg.ini")
    for (i = 1; i <= fileCount; ++i) checkPositions(files[i])
    exit findings > 0
}

# --- The checks ---

function checkConfiguration(path,    i) {
    load(path)
    for (i = 1; i <= entryCount; ++i) {
        if (sectionOf[i] == "systemidmap") checkSystem(path, i)
        if (sectionOf[i] == "pciidmap") checkAdapter(path, i)
    }
    addPerSystemFile("UNKNOWN_SERVER")  # read for every machine that is not listed; may be absent
}

# Every system has a file that says what is built in, even when nothing is.
function checkSystem(path, i,    identifier) {
    identifier = valueOf[i]
    if (identifier == "" || identifier in systems) return
    systems[identifier] = 1
    if (!addPerSystemFile(identifier))
        report(path, lineOf[i], "system " identifier " has no per-system file")
}

function checkAdapter(path, i,    id, name) {
    id = keyOf[i]
    name = fold(valueOf[i])
    if (!isID(id)) report(path, lineOf[i], "malformed ID \"" spellingOf[i] "\"")
    if (name == "") return  # left out of the report on purpose
    if (isID(id)) mapped[name] = 1
    if (name in adapters) return
    adapters[name] = 1
    if (!(name in headerOf))
        report(path, lineOf[i], "adapter " valueOf[i] " has no section")
    else if (lookUp(name, "adaptertype") == "")
        report(path, headerOf[name], "adapter " valueOf[i] " has no AdapterType")
}

function checkPositions(path,    i, j, total, positions) {
    load(path)
    for (i = 1; i <= entryCount; ++i) {
        if (keyOf[i] != "onboard") continue
        if (!(sectionOf[i] in mapped))
            report(path, lineOf[i], "no ID is mapped to " nameOf[sectionOf[i]])
        total = split(valueOf[i], positions, ";")
        if (total > 4) report(path, lineOf[i], total " positions, of which four are read")
        for (j = 1; j <= total; ++j)
            if (!isPosition(trim(positions[j])))
                report(path, lineOf[i], "malformed position \"" trim(positions[j]) "\"")
    }
}

function isID(key) { return length(key) == 10 && key ~ /^0x[0-9a-f]+$/ }

# A number above 65535 is no bus and no device.
function isPosition(position,    numbers) {
    if (position !~ /^[0-9]+[ \t]*,[ \t]*[0-9]+$/) return 0
    split(position, numbers, ",")
    return numbers[1] + 0 <= 65535 && numbers[2] + 0 <= 65535
}

function report(path, line, message) {
    print path ":" line ": " message
    ++findings
}

# --- Files ---

# Adds a system's own file to those to check. Whether it has one: its name is what follows the
# first "_" of the identifier, as it is or in lower case.
function addPerSystemFile(identifier,    at, name, path) {
    at = index(identifier, "_")
    if (!at) return 0
    name = substr(identifier, at + 1) ".ini"
    path = folder name
    if (!isFile(path)) path = folder tolower(name)
    if (!isFile(path)) return 0
    if (!(path in isAdded)) files[++fileCount] = path
    isAdded[path] = 1
    return 1
}

# A pipe or a device is no file, and reading it may never end.
function isFile(path) {
    return system("test -f " quoted(path) " && test -r " quoted(path)) == 0
}

# A path as one word for the shell, whatever is in it.
function quoted(path) {
    gsub(/'/, "'\\''", path)
    return "'" path "'"
}

# Loads the entries that a lookup can find, in their order.
function load(path,    command, text, number, section, at) {
    split("", headerOf)
    split("", nameOf)
    split("", indexOf)
    entryCount = 0
    section = ""
    command = "tr -d '\\000\\r' < " quoted(path)
    for (number = 1; (command | getline text) > 0; ++number) {
        text = trim(text)
        at = index(text, "=")
        if (text ~ /^\[/)
            section = enterSection(substr(text, 2), number)
        else if (at && section != "" && text !~ /^;/)
            addEntry(section, trim(substr(text, 1, at - 1)), trim(substr(text, at + 1)), number)
    }
    close(command)
}

# The folded name of the section that a header opens; "" when nothing looks in there: of one name,
# only the first section is searched.
function enterSection(header, number,    name) {
    sub(/\].*/, "", header)
    header = trim(header)
    name = fold(header)
    if (name in headerOf) return ""
    headerOf[name] = number
    nameOf[name] = header
    return name
}

function addEntry(section, key, value, number) {
    if ((section, fold(key)) in indexOf) return
    indexOf[section, fold(key)] = ++entryCount
    sectionOf[entryCount] = section
    keyOf[entryCount] = fold(key)
    spellingOf[entryCount] = key
    valueOf[entryCount] = value
    lineOf[entryCount] = number
}

function lookUp(section, key) {
    return (section, key) in indexOf ? valueOf[indexOf[section, key]] : ""
}

# Names are compared without regard to case.
function fold(name) { return tolower(name) }

function trim(text) {
    sub(/^[ \t]+/, "", text)
    sub(/[ \t]+$/, "", text)
    return text
}
