# Makes the data of the benchmarks: product CDs and detection files of invented makers, adapters and
# systems. It has its own random numbers, so that every run makes the same bytes.
#
#     awk -v out=FOLDER -f mkdata.awk
#
# FOLDER/small and FOLDER/large each hold cd, the root of a CD, and detection files for it, named
# after their number of PCI functions. FOLDER/fleet holds 1,000 detection files of machines for the
# small CD.

# A random number from 0 to n - 1. Every product is exact in floating point.
function below(n) {
    state = state * 16807 % 2147483647
    return int(state * n / 2147483647)
}

function openFile(path) { file = path; printf "" > file }
function put(text) { print text > file }
function closeFile() { close(file) }

# ---------------------------------------------------------------- What can be in a machine

function makeKinds(    words, i) {
    kinds = split("RAID_CONTROLLER DASD 010400 SCSI_HOST DASD 010000 GIGABIT_NIC NETWORK 020000" \
        " ETHERNET_NIC NETWORK 020000 VIDEO_CTRL VIDEO 030000 SERIAL_PORTS OTHER 070002" \
        " SERVICE_BOARD ServiceProcessor 0B8000 BRIDGE OTHER 060400", words, " ") / 3
    for (i = 1; i <= kinds; ++i) {
        kindWord[i] = words[3 * i - 2]
        kindType[i] = words[3 * i - 1]
        kindClass[i] = words[3 * i]
    }
}

# A maker's name of three syllables. Each index from 0 to 2,743 gives another name.
function makerName(i) {
    i = i * 1009 % 2744
    return syllable[i % 14 + 1] syllable[int(i / 14) % 14 + 1] syllable[int(i / 196) + 1]
}

# The pairs of vendor and device ID, and the name of each pair. A quarter of the pairs have the name
# of the pair before, like revisions of one adapter.
function makePairs(total,    maker, device, last, kind) {
    split("BA DE FI GO KU LA ME NI PO RU SA TE VI ZO", syllable, " ")
    for (maker = 0; pairs < total; ++maker) {
        last = 1 + below(22)
        for (device = 1; device <= last && pairs < total; ++device) {
            if (device == 1 || below(4) > 0) {
                kind = 1 + below(kinds)
                name[pairs + 1] = makerName(maker) "_" kindWord[kind] "_" 1000 + 10 * device
            } else {
                name[pairs + 1] = name[pairs]
            }
            ++pairs
            vendorID[pairs] = 4096 + 37 * maker
            deviceID[pairs] = 17 * device
            kindOf[pairs] = kind
        }
    }
}

function makeSystems(    birds, i, count) {
    count = split("HERON WREN FINCH SWIFT PLOVER DUNLIN LINNET SISKIN BUNTING REDSTART", birds, " ")
    for (i = 0; i < 60; ++i) {
        model[i] = birds[i % count + 1] 10 + int(i / count)
        systemID[i] = "SRV_" model[i]
        machineType[i] = sprintf("%04dK%02d", 7000 + 13 * i, i)
    }
    systems = 60
}

# ---------------------------------------------------------------- One machine

# Fills a machine with PCI functions. Most cards are single, some have several functions, some
# common ones occur again and again, and a few have no name on any CD.
function makeMachine(mapped, total,    pair, copies, bus, device, dice) {
    functions = 0
    bus = 0
    device = -1
    while (functions < total) {
        dice = below(100)
        copies = 1
        pair = 1 + below(mapped)
        if (dice < 5) pair = 0
        else if (dice < 35) pair = 1 + below(16) * int(mapped / 16)
        if (dice >= 5 && dice < 15) copies = 2 + below(3)
        device += 1 + below(3)
        if (device > 31) { device = below(4); bus = (bus + 1) % 256 }
        for (; copies > 0 && functions < total; --copies) {
            pairOf[functions] = pair
            busOf[functions] = bus
            deviceOf[functions] = device
            ++functions
        }
    }
}

function writeScan(path, type,    i, pair) {
    openFile(path)
    put("[System]\nMachine_Type = " type "\nModel_Number = A" 10 + below(90))
    put("Serial_Number = SN" 10000 + below(90000) "\nNumber_Of_Enclosures = 1")
    put("BIOS_Version = 1." 10 + below(90) "\nBIOS_Build_Level = B" 100 + below(900))
    put("ROM_Diagnostics_Build_Level = D" 100 + below(900))
    put("Active_Processors = " 1 + below(4) "\nProcessor_Slots = 4")
    put("Total_Enabled_Memory_Mb = " 1024 * (1 + below(16)))
    put("\n[PCI]\nTotal_Number_Of_Devices = " functions)
    for (i = 0; i < functions; ++i) {
        pair = pairOf[i]
        put(sprintf("\nVendor_ID.%d = 0x%04X", i, pair ? vendorID[pair] : 65261))
        put(sprintf("Device_ID.%d = 0x%04X", i, pair ? deviceID[pair] : i))
        put(sprintf("Subvendor_ID.%d = 0x%04X\nSubdevice_ID.%d = 0x%04X", i, 4096 + below(3), i,
                    below(65536)))
        put("Bus_Number." i " = " busOf[i] "\nDevice_Number." i " = " deviceOf[i])
        put("Class_Code." i " = 0x" (pair ? kindClass[kindOf[pair]] : "FF0000"))
        put(sprintf("Revision.%d = 0x%02X\nHeader_Type.%d = 0x00", i, below(16), i))
    }
    closeFile()
}

# The on-board positions for the first named adapters of the machine. Only every second adapter is
# at a position that the file lists for it.
function writePositions(path, sections,    i, n, done, elsewhere) {
    openFile(path)
    put("; On-board positions: bus,device;bus,device")
    for (i = 0; i < functions && sections > 0; ++i) {
        n = name[pairOf[i]]
        if (!pairOf[i] || n in done) continue
        done[n] = 1
        elsewhere = 300 + below(8) "," below(32)
        put("\n[" n "]\nOnBoard = " elsewhere (sections % 2 ? "; " busOf[i] "," deviceOf[i] : ""))
        --sections
    }
    closeFile()
}

# ---------------------------------------------------------------- One product CD

function writeConfiguration(path, mapped,    i) {
    openFile(path)
    put("; System configuration for the deployment tools\n\n[SystemIDMap]")
    for (i = 0; i < systems; ++i) put(machineType[i] " = " systemID[i])
    for (i = 0; i < systems; ++i) put("\n[" systemID[i] "]\nDirectory = " tolower(model[i]))
    put("\n[PCIIDMap]")
    for (i = 1; i <= mapped; ++i) {
        if (vendorID[i] != vendorID[i - 1]) put(sprintf("; Maker %04X", vendorID[i]))
        put(sprintf("0x%04X%04X = %s", vendorID[i], deviceID[i], name[i]))
    }
    for (i = 1; i <= mapped; ++i)
        if (name[i] != name[i - 1]) put("\n[" name[i] "]\nAdapterType = " kindType[kindOf[i]])
    put("\n[STORMPETREL]\nAdapterType = ServiceProcessor")
    put("Systems = " systemID[3] "," systemID[37] "," systemID[41])
    put("\n[CORVEL_ADV_SYS_MGT_ISA_CONTROLLER]\nAdapterType = ServiceProcessor")
    put("Systems = " systemID[5] "," systemID[8])
    closeFile()
}

# A CD, and machines of 24 and of 1 to 4,096 functions for one of its systems. All of them begin
# with the same functions.
function makeSet(set, seed, mapped, sections,    folder, ini, total) {
    folder = out "/" set
    ini = folder "/cd/rwise/ini"
    system("mkdir -p '" ini "'")
    writeConfiguration(ini "/syscfg.ini", mapped)
    for (total = 1; total <= 4096; total *= 4) writeMachine(folder, seed, mapped, total)
    writeMachine(folder, seed, mapped, 24)
    writePositions(ini "/" model[37] ".ini", sections)
}
function writeMachine(folder, seed, mapped, total) {
    state = seed
    makeMachine(mapped, total)
    writeScan(folder "/" total ".ini", machineType[37])
}

# Every system of the small CD gets its own file. Some of these have a name in lower case.
function makeFleet(seed, mapped, machines,    ini, i) {
    state = seed
    ini = out "/small/cd/rwise/ini/"
    system("mkdir -p '" out "/fleet'")
    for (i = 0; i < systems; ++i) {
        if (i == 37) continue
        makeMachine(mapped, 24)
        writePositions(ini (i % 2 ? tolower(model[i]) : model[i]) ".ini", 8)
    }
    for (i = 0; i < machines; ++i) {
        makeMachine(mapped, 12 + below(29))
        writeScan(sprintf("%s/fleet/scan%04d.ini", out, i), machineType[below(systems)])
    }
}

BEGIN {
    state = 1
    makeKinds()
    makePairs(17600)
    makeSystems()
    makeSet("small", 21000, 400, 8)
    makeSet("large", 22000, 17600, 40)
    makeFleet(14, 400, 1000)
}
