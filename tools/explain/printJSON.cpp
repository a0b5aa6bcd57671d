#include "explain/printJSON.h"

#include <cstdio>
#include <nlohmann/json.hpp>
#include <string>

#include "common/printable.h"

namespace {
using Json = nlohmann::ordered_json;  // keeps the order of the keys

std::string text(const CString& value) { return printable(value).c_str(); }

Json nullOr(const CString& value) { return value.IsEmpty() ? Json() : Json(text(value)); }

// Two IDs, as a report has them.
std::string pairOf(std::uint16_t vendorID, std::uint16_t deviceID) {
    char digits[] = "00000000";
    std::snprintf(digits, sizeof digits, "%.4hX%.4hX", vendorID, deviceID);
    return digits;
}

std::string classOf(const PCIDevice& device) {
    char digits[] = "00000000";
    std::snprintf(digits, sizeof digits, "%06X", static_cast<unsigned>(device.classCode));
    return digits;
}

const char* stateOf(const DeviceEntry& entry) {
    if (entry.adapter) return "named";
    if (!entry.device) return "absent";
    return entry.isLeftOut ? "left_out" : "unnamed";
}

Json describe(const DeviceEntry& entry) {
    Json object;
    object["entry"] = entry.first;
    if (entry.last != entry.first) object["last"] = entry.last;
    if (const PCIDevice* device = entry.device) {
        object["bus"] = device->busNumber;
        object["device"] = device->deviceNumber;
        object["pci_id"] = pairOf(device->vendorID, device->deviceID);
        object["subsys_id"] = pairOf(device->subVendorID, device->subDeviceID);
        object["class"] = classOf(*device);
    }
    object["state"] = stateOf(entry);
    if (const PCIDevice* adapter = entry.adapter) {
        object["adapter"] = text(adapter->adapterName);
        object["instance"] = adapter->instance;
        object["type"] = text(adapter->adapterType);
        object["group"] = nullOr(groupOf(*adapter));
        object["on_board"] = isOnBoard(*adapter);
    }
    return object;
}

Json describe(const Counts& counts) {
    return {{"entries", counts.entries}, {"named", counts.named},   {"left_out", counts.leftOut},
            {"unnamed", counts.unnamed}, {"absent", counts.absent}, {"on_board", counts.onBoard}};
}
}  // namespace

void printJSON(Machine& machine) {
    Json object;
    object["file"] = text(machine.path);
    object["machine_type"] = text(machine.machineType);
    object["serial_number"] = text(machine.serialNumber);
    object["system"] = text(machine.systemID);
    object["directory"] = text(machine.directory);
    object["system_file"] = nullOr(machine.getSystemPath());
    object.update(describe(machine.counts));
    object["devices"] = Json::array();
    for (const DeviceEntry& entry : machine.entries) object["devices"].push_back(describe(entry));
    object["added"] = Json::array();
    for (const CString& name : machine.addedAdapters) object["added"].push_back(text(name));
    object["warnings"] = Json::array();
    for (const Findings::Finding& warning : machine.findings.getSorted())
        object["warnings"].push_back({{"line", warning.line}, {"text", text(warning.text)}});
    std::puts(object.dump(-1, ' ', false, Json::error_handler_t::replace).c_str());
}
