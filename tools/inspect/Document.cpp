#include "inspect/Document.h"

#include <strings.h>

#include <algorithm>
#include <utility>

// What lookups tell lines apart by.
struct Document::Name {
    bool isOfEntry;
    unsigned section;  // the line of its header; 0 for a header, and above the first one
    const char* text;

    // The order of the index, as strcmp gives it: first the headers, then the entries section by
    // section.
    int compare(const Name& other) const {
        if (isOfEntry != other.isOfEntry) return isOfEntry ? 1 : -1;
        if (section != other.section) return section < other.section ? -1 : 1;
        return strcasecmp(text, other.text);
    }
};

Document::Name Document::nameOf(const Line& line) {
    return {line.isEntry(), line.section ? line.section->number : 0, line.name.c_str()};
}

Document::Document(const CString& path) {
    divide(CIniFile(path));
    buildIndex();
}

void Document::divide(const CIniFile& file) {
    unsigned number = 0;
    for (const auto* p = file.GetFirstLine(); p; p = p->pNext) ++lineCount;
    lines.reserve(lineCount);  // lines point to each other
    const Line* header = nullptr;
    for (const auto* p = file.GetFirstLine(); p; p = p->pNext) {
        Line line;
        line.number = ++number;
        line.kind = CIniFile::DivideLine(p->sLine, line.name, line.value);
        if (line.kind == CIniFile::lkBlank) continue;
        if (!line.isHeader()) line.section = header;
        lines.push_back(std::move(line));
        if (lines.back().isHeader()) header = &lines.back();
    }
}

void Document::buildIndex() {
    for (Line& line : lines)
        if (line.kind != CIniFile::lkBare) index.push_back(&line);
    std::sort(index.begin(), index.end(), [](const Line* a, const Line* b) {
        const int order = nameOf(*a).compare(nameOf(*b));
        return order != 0 ? order < 0 : a->number < b->number;
    });
    const Line* first = nullptr;
    for (Line* line : index) {
        if (!first || nameOf(*first).compare(nameOf(*line)) != 0) first = line;
        line->first = first;
    }
}

Lines Document::getLines(const Line& header) const {
    const Line* const end = lines.data() + lines.size();
    return {&header + 1,
            std::find_if(&header + 1, end, [](const Line& line) { return line.isHeader(); })};
}

const Line* Document::find(const Name& wanted) const {
    const auto found = std::lower_bound(
        index.begin(), index.end(), wanted,
        [](const Line* line, const Name& name) { return nameOf(*line).compare(name) < 0; });
    return found != index.end() && nameOf(**found).compare(wanted) == 0 ? *found : nullptr;
}

const Line* Document::findSection(const CString& name) const {
    return find({false, 0, name.c_str()});
}

const Line* Document::findEntry(const Line* header, const CString& key) const {
    return header ? find({true, header->number, key.c_str()}) : nullptr;
}
