# The conversion as an awk program, to compare whole runs with. It looks its values up in tables
# instead of walking through lines. It follows only the rules that the data of mkdata.awk needs.
#
#     RWCD=CDROOT awk -f convert.awk SCANFILE

function trim(text) {
    sub(/^[ \t]+/, "", text)
    sub(/[ \t]+$/, "", text)
    return text
}

# Stores the entries of a file in entry[document, section, key], with the names in lower case. Only
# the first section of a name and the first entry of a key are stored.
function load(document, file,    line, mark, section, isSearched, at, name) {
    isSearched = 1
    section = document SUBSEP
    while ((getline line < file) > 0) {
        gsub(/\r/, "", line)
        line = trim(line)
        mark = substr(line, 1, 1)
        if (mark == "[") {
            at = index(line, "]")
            name = at ? substr(line, 2, at - 2) : substr(line, 2)
            section = document SUBSEP tolower(trim(name))
            isSearched = !(section in sections)
            sections[section] = 1
        } else if (isSearched && mark != ";" && (at = index(line, "=")) > 0) {
            name = section SUBSEP tolower(trim(substr(line, 1, at - 1)))
            if (!(name in entry)) entry[name] = trim(substr(line, at + 1))
        }
    }
    close(file)
}

function read(document, section, key) {
    key = document SUBSEP tolower(section) SUBSEP tolower(key)
    return key in entry ? entry[key] : ""
}

function isReadable(file,    line, result) {
    result = (getline line < file) >= 0
    close(file)
    return result
}

# The low 16 bits of the number at the start of a text. Base 0 means that the prefix of the number
# tells the base.
function number(text, base,    value, digit, i) {
    text = tolower(text)
    if (base == 0) base = text ~ /^0x/ ? 16 : text ~ /^0/ ? 8 : 10
    if (base == 16) sub(/^0x/, "", text)
    for (i = 1; i <= length(text); ++i) {
        digit = index("0123456789abcdef", substr(text, i, 1)) - 1
        if (digit < 0 || digit >= base) break
        value = (value * base + digit) % 65536
    }
    return value + 0
}

function join(list, item) { return list == "" ? item : list "," item }

function isOnBoard(name, bus, device,    positions, parts, total, i) {
    total = split(read("positions", name, "OnBoard"), positions, ";")
    for (i = 1; i <= total && i <= 4; ++i) {
        split(positions[i], parts, ",")
        if (parts[1] + 0 == bus && parts[2] + 0 == device) return 1
    }
    return 0
}

# ---------------------------------------------------------------- The parts of the report

function printIdentity(systemID,    lines, fields, total, i) {
    printf "[MACH]\nSystemID = %s\n\n[%s]\n", systemID, systemID
    total = split("MachTypeModelNumber=Machine_Type ModelNumber=Model_Number" \
        " SerialNumber=Serial_Number TotalNumEnclosures=Number_Of_Enclosures" \
        " BIOSVersion=BIOS_Version BuildID=BIOS_Build_Level Directory" \
        " DiagBuildID=ROM_Diagnostics_Build_Level DiagVersion Bus DiskDrivesToUpdate" \
        " SPROMLevel SPBuildID SPVersion Processors=Active_Processors" \
        " ProcessorSlots=Processor_Slots Memory=Total_Enabled_Memory_Mb", lines, " ")
    fixed["Directory"] = read("configuration", systemID, "Directory")
    fixed["Bus"] = "PCI"
    fixed["DiskDrivesToUpdate"] = "0"
    for (i = 1; i <= total; ++i) {
        if (split(lines[i], fields, "=") == 2)
            printf "%s = %s\n", fields[1], read("scan", "System", fields[2])
        else
            printf "%s = %s\n", fields[1], fixed[fields[1]]
    }
}

# Keeps the devices that the configuration names, in the order of their entries.
function findAdapters(    total, i, key, vendor, device) {
    total = read("scan", "PCI", "Total_Number_Of_Devices") + 0
    for (i = 0; i < total; ++i) {
        vendor = number(read("scan", "PCI", "Vendor_ID." i), 16)
        device = number(read("scan", "PCI", "Device_ID." i), 16)
        key = sprintf("%04X%04X", vendor, device)
        name[adapters] = read("configuration", "PCIIDMap", "0x" key)
        if (name[adapters] == "") continue
        pciID[adapters] = key
        vendor = number(read("scan", "PCI", "Subvendor_ID." i), 16)
        device = number(read("scan", "PCI", "Subdevice_ID." i), 16)
        subsystemID[adapters] = sprintf("%04X%04X", vendor, device)
        bus[adapters] = number(read("scan", "PCI", "Bus_Number." i), 0)
        slot[adapters] = number(read("scan", "PCI", "Device_Number." i), 0)
        ++count[name[adapters]]
        ++adapters
    }
}

function printAdapter(i,    n, type, group) {
    n = name[i]
    type = read("configuration", n, "AdapterType")
    printf "\n[%s%s]\n", n, (++instance[n] > 1 ? instance[n] : "")
    if (count[n] > 1) printf "Count = %d\n", count[n]
    if (i > 0 && bus[i] == bus[i - 1] && slot[i] == slot[i - 1]) ++functionNumber
    else functionNumber = 0
    printf "Type = %s\nBusN = %d\nDevN = %d\nFunN = %d\n", type, bus[i], slot[i], functionNumber
    if (isOnBoard(n, bus[i], slot[i])) {
        print "On-Board = TRUE"
        listed["OnBoard"] = join(listed["OnBoard"], n)
    }
    printf "SubSysID = %s\nPCIID = %s\n", subsystemID[i], pciID[i]
    for (group = 1; group <= 4 && !index(type, types[group]); ++group) continue
    if (group <= 4) listed[types[group]] = join(listed[types[group]], n)
    listed["All"] = join(listed["All"], n)
}

function listSystemAdapter(n, systemID) {
    if (!index(read("configuration", n, "Systems"), systemID)) return
    listed["ServiceProcessor"] = join(listed["ServiceProcessor"], n)
    listed["All"] = join(listed["All"], n)
}

BEGIN {
    split("DASD NETWORK VIDEO ServiceProcessor", types, " ")
    folder = ENVIRON["RWCD"] "/rwise/ini/"
    load("configuration", folder "syscfg.ini")
    load("scan", ARGV[1])
    systemID = read("configuration", "SystemIDMap", read("scan", "System", "Machine_Type"))
    if (systemID == "") systemID = "UNKNOWN_SERVER"
    printIdentity(systemID)

    adapters = 0
    findAdapters()
    if (adapters == 0) {
        print "!Error!  Could not find PCI information.  !Error!"
        exit 1
    }
    file = substr(systemID, index(systemID, "_") + 1) ".ini"
    if (!isReadable(folder file)) file = tolower(file)
    load("positions", folder file)

    printf "\n[PCI]\nAdapters = %s", name[0]
    for (i = 1; i < adapters; ++i) printf ",%s", name[i]
    print ""
    for (i = 0; i < adapters; ++i) printAdapter(i)

    listSystemAdapter("STORMPETREL", systemID)
    listSystemAdapter("CORVEL_ADV_SYS_MGT_ISA_CONTROLLER", systemID)
    printf "\n[DETECTED_BY_GROUP]\nDASDAdapters = %s\n\n", listed["DASD"]
    printf "NetworkAdapters = %s\n\nSystemDevices = \n\n", listed["NETWORK"]
    printf "VideoAdapter = %s\n\n", listed["VIDEO"]
    printf "ServiceProcessor = %s\n\n", listed["ServiceProcessor"]
    printf "CDROM = IDE\n\nAllAdapters = %s\n\n", join(listed["All"], "IDE")
    printf "OnBoardAdapters = %s\n", listed["OnBoard"]
}
