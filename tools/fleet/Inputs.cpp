#include "fleet/Inputs.h"

#include <dirent.h>
#include <strings.h>
#include <sys/stat.h>

#include <algorithm>
#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <map>
#include <set>
#include <tuple>

#include "common/command.h"

namespace {
constexpr std::string_view kReportExtension = ".report";

// The name of the report without its extension: x.ini gives x, any other name gives itself.
std::string_view stemOf(const char* path) {
    const char* const slash = std::strrchr(path, '/');
    std::string_view name = slash ? slash + 1 : path;
    constexpr std::string_view kExtension = ".ini";
    if (name.size() > kExtension.size() &&
        strcasecmp(name.end() - kExtension.size(), kExtension.data()) == 0)
        name.remove_suffix(kExtension.size());
    return name;
}

auto reportOf(const Input& input) {
    return std::make_tuple(input.device, input.folder, stemOf(input.path.c_str()));
}

// Those that *.ini matches in a shell, in any case of letters.
bool isDetectionFile(const std::string& name) {
    return name[0] != '.' && stemOf(name.c_str()) != name;
}

bool isReport(std::string_view name) {
    return name.size() > kReportExtension.size() &&
           name.substr(name.size() - kReportExtension.size()) == kReportExtension;
}

bool isFolder(const CString& path) {
    struct stat status;
    return stat(path.c_str(), &status) == 0 && S_ISDIR(status.st_mode);
}

// Returns 0, or an errno.
int listFolder(const CString& path, std::set<std::string>& names) {
    dirent** entries = nullptr;
    const int count = scandir(path.c_str(), &entries, nullptr, nullptr);
    if (count < 0) return errno;
    for (int i = 0; i < count; ++i) {
        names.insert(entries[i]->d_name);
        std::free(entries[i]);
    }
    std::free(entries);
    return 0;
}

void collectStrays(const CString& folder, const std::set<std::string>& names, Inputs& inputs) {
    // The names by those of their reports. From a directory, only x.ini is converted, but somebody
    // may convert a file of another name by itself.
    std::multimap<std::string_view, const char*> owners;
    for (const std::string& name : names) {
        owners.emplace(name, name.c_str());
        owners.emplace(stemOf(name.c_str()), name.c_str());
    }
    for (const std::string& name : names) {
        if (!isReport(name) || isFolder(folder + name.c_str())) continue;
        const auto range = owners.equal_range(
            std::string_view(name).substr(0, name.size() - kReportExtension.size()));
        if (std::all_of(range.first, range.second,
                        [&](const auto& owner) { return isFolder(folder + owner.second); }))
            inputs.strays.push_back(folder + name.c_str());
    }
}

int collectFolder(const CString& path, const struct stat& status, Inputs& inputs) {
    std::set<std::string> names;
    if (const int error = listFolder(path, names))
        return complainUnreadable(path, std::strerror(error));
    const CString folder = path.EndsWith("/") ? path : path + "/";
    const std::size_t before = inputs.files.size();
    for (const std::string& name : names)
        if (isDetectionFile(name))
            inputs.files.push_back({folder + name.c_str(), status.st_dev, status.st_ino});
    if (inputs.files.size() == before) return complain("there is no " + folder + "*.ini");
    collectStrays(folder, names, inputs);
    return kFine;
}

int collect(const CString& path, Inputs& inputs) {
    struct stat self, folder;
    if (stat(path.c_str(), &self) != 0 || stat((folderOf(path) + ".").c_str(), &folder) != 0)
        return complainUnreadable(path, std::strerror(errno));
    inputs.isOneFile = !S_ISDIR(self.st_mode);
    if (!inputs.isOneFile) return collectFolder(path, self, inputs);
    if (isReport(path.c_str() + folderOf(path).GetLength())) return complain(path + " is a report");
    inputs.files.push_back({path, folder.st_dev, folder.st_ino});
    return kFine;
}
}  // namespace

int collectInputs(char* operands[], Inputs& inputs) {
    const bool isOneOperand = !operands[1];
    for (; *operands; ++operands)
        if (collect(*operands, inputs) != kFine) return kCouldNotRun;
    inputs.isOneFile = inputs.isOneFile && isOneOperand;
    std::stable_sort(inputs.files.begin(), inputs.files.end(),
                     [](const Input& a, const Input& b) { return reportOf(a) < reportOf(b); });
    const auto twin =
        std::adjacent_find(inputs.files.begin(), inputs.files.end(),
                           [](auto& a, auto& b) { return reportOf(a) == reportOf(b); });
    if (twin != inputs.files.end())
        return complain(twin[0].path + " and " + twin[1].path + " have the same report");
    return kFine;
}

CString reportPathOf(const CString& path) {
    const std::string_view stem = stemOf(path.c_str());
    return path.Left(static_cast<int>(stem.end() - path.c_str())) + kReportExtension.data();
}

CString folderOf(const CString& path) { return path.Left(path.ReverseFind("/") + 1); }
