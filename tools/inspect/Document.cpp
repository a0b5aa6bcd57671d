#include "inspect/Document.h"

#include <strings.h>

#include <algorithm>
#include <utility>

namespace {
// The line of the section's header. 0 for a header, and for an entry above the first one.
unsigned sectionOf(const Line& line) { return line.section ? line.section->number : 0; }

// The order of the index, as strcmp gives it: first the headers, then the entries section by
// section. The result is 0 if lookups cannot tell the lines apart.
int compareNames(const Line& a, const Line& b) {
    if (a.kind != b.kind) return a.isHeader() ? -1 : 1;
    if (sectionOf(a) != sectionOf(b)) return sectionOf(a) < sectionOf(b) ? -1 : 1;
    return strcasecmp(a.name.c_str(), b.name.c_str());
}

bool comesBefore(const Line* a, const Line* b) {
    const int order = compareNames(*a, *b);
    return order != 0 ? order < 0 : a->number < b->number;
}
}  // namespace

Document::Document(const CString& path) {
    divide(CIniFile(path));
    buildIndex();
}

void Document::divide(const CIniFile& file) {
    unsigned total = 0, number = 0;
    for (const auto* p = file.GetFirstLine(); p; p = p->pNext) ++total;
    lines.reserve(total);  // lines point to each other
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
    std::sort(index.begin(), index.end(), comesBefore);
    const Line* first = nullptr;
    for (Line* line : index) {
        if (!first || compareNames(*first, *line) != 0) first = line;
        line->first = first;
    }
}

Lines Document::getLines(const Line& header) const {
    const Line* const end = getLines().end();
    return {&header + 1,
            std::find_if(&header + 1, end, [](const Line& l) { return l.isHeader(); })};
}

// The number of `wanted` is 0, so the line that is found is the first one of its name.
const Line* Document::find(const Line& wanted) const {
    const auto found = std::lower_bound(index.begin(), index.end(), &wanted, comesBefore);
    return found != index.end() && compareNames(**found, wanted) == 0 ? *found : nullptr;
}

const Line* Document::findSection(const CString& name) const {
    Line wanted;
    wanted.kind = CIniFile::lkHeader;
    wanted.name = name;
    return find(wanted);
}

const Line* Document::findEntry(const Line* header, const CString& key) const {
    if (!header) return nullptr;
    Line wanted;
    wanted.kind = CIniFile::lkEntry;
    wanted.name = key;
    wanted.section = header;
    return find(wanted);
}
