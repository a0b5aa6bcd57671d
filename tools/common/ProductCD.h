#pragma once

#include <map>
#include <string>
#include <vector>

#include "common/Copy.h"
#include "util/CString.h"

/// The product CD. Each of its files is read at most once, from the folder that was opened first:
/// whatever happens to the CD later, a run is of one CD. What was read is in memory for the
/// converter, under the paths of the CD.
class ProductCD {
public:
    /// A file of the CD. Its text is in `Copies`, so `copy.text` is empty.
    struct File {
        CString path;
        Copy copy;
    };

    ProductCD();  ///< Opens the folder and reads the system configuration file.
    ~ProductCD();
    ProductCD(const ProductCD&) = delete;
    ProductCD& operator=(const ProductCD&) = delete;

    const File& getConfiguration() const { return *configuration; }
    /// Returns the per-system files that the inventory finds for a system. Reads those that were
    /// not read before. First come those that it cannot open, then the one that it takes, if any.
    std::vector<const File*> getSystemFiles(const CString& systemID);

private:
    File& read(const CString& path);

    int folder = -1;  // for searching only
    std::map<std::string, File> files;
    const File* configuration = nullptr;
};

/// If the system configuration file could not be read, says so with complain() and returns false.
bool requireConfiguration(const ProductCD& cd);

/// "RWCD is " and its value, "RWCD is empty" or "RWCD is not set".
CString describeRoot();
