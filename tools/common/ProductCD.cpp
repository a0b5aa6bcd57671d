#include "common/ProductCD.h"

#include <unistd.h>

#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <utility>

#include "common/command.h"
#include "pci/CustomPCIDeviceList.h"

namespace {
// The path of a file of the CD, from the folder of the CD on.
const char* fromFolder(const CString& path) {
    const char* rest = path.c_str() + CustomPCIDeviceList::getCDPathName("").GetLength();
    while (*rest == '/') ++rest;  // a name may begin with one
    return rest;
}

// Whether the inventory takes this file. If not, it tries the next one.
bool isTaken(const Copy& copy) {
    return copy.state != Copy::kAbsent && copy.state != Copy::kNotOpened;
}
}  // namespace

ProductCD::ProductCD()
    : folder(
          open(CustomPCIDeviceList::getCDPathName("").c_str(), O_PATH | O_DIRECTORY | O_CLOEXEC)) {
    const CString reason = std::strerror(errno);
    File& file = read(CustomPCIDeviceList::getConfigurationPathName());
    if (folder < 0) file.copy.reason = reason;
    configuration = &file;
}

ProductCD::~ProductCD() {
    if (folder >= 0) close(folder);
}

ProductCD::File& ProductCD::read(const CString& path) {
    const auto [place, isNew] = files.try_emplace(path.c_str());
    File& file = place->second;
    if (!isNew) return file;
    file.path = path;
    file.copy = copyFile(fromFolder(path), folder);
    // What is no regular file, the converter takes as an empty one.
    if (file.copy.isWhole() || file.copy.state == Copy::kNotRegular)
        Copies::set(path, std::exchange(file.copy.text, {}));
    return file;
}

std::vector<const ProductCD::File*> ProductCD::getSystemFiles(const CString& systemID) {
    CustomPCIDeviceList inventory;
    inventory.setSystemKeyword(systemID);
    CString candidates[2];
    std::vector<const File*> found;
    if (!inventory.getSysINICandidates(candidates[0], candidates[1])) return found;
    for (const CString& path : candidates) {
        const File& file = read(path);
        if (file.copy.state != Copy::kAbsent) found.push_back(&file);
        // Both paths may be the same.
        if (isTaken(file.copy) || candidates[0] == candidates[1]) break;
    }
    return found;
}

bool requireConfiguration(const ProductCD& cd) {
    const ProductCD::File& file = cd.getConfiguration();
    if (!file.copy.isWhole())
        complainUnreadable(file.path, file.copy.reason + "; " + describeRoot());
    return file.copy.isWhole();
}

CString describeRoot() {
    const CString variable = CustomPCIDeviceList::kCDRootVariable;
    const char* root = std::getenv(variable.c_str());
    if (!root) return variable + " is not set";
    return variable + " is " + (*root ? root : "empty");
}
