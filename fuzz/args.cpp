// Any bytes as the declarations and words of a command line, and as a file with a version stamp.
// The input is the lines of four parts, divided by lines "%%": declarations, words, the file,
// versions. A declaration is the mode ("0" to "3"), "!" when it is required, and the name.

#include "fuzz.h"
#include "util/CLParams.h"
#include "util/MyFileIO.h"

const char* nameIn(const CString& line) { return line.c_str() + (line[1] == '!' ? 2 : 1); }

// The result and the number of characters. Then the value at each position, from one before the
// first parameter to one after the last: after a "+" if it was found, else after a "-".
CString parse(const Strings& table, const Strings& words, bool isCaseSensitive) {
    CCLParams params;
    for (const CString& line : table)
        params.Add(nameIn(line), static_cast<CCLParams::CLParamModes>(line[0] - '0'),
                   line[1] == '!');
    std::vector<const char*> argv;
    for (const CString& word : words) argv.push_back(word.c_str());
    const int argc = static_cast<int>(argv.size());
    CString all = params.Parse(argc, argv.data(), isCaseSensitive), named, value;
    all += " " + CString(params.GetNumberOfCommandLineCharacters());
    CHECK(params.GetValue(nameIn(table[0]), named) == params.GetValue(1, value));
    SAME(named, value);
    for (unsigned i = 0; i <= table.size() + 1; ++i)
        all += (params.GetValue(i, value) ? "\n+" : "\n-") + value;
    return all;
}

// Does not hold if a word is one blank: it is joined without a character of its own.
void aSuccessfulParseCountsAllCharacters(const Strings& words, const CString& outcome) {
    unsigned given = words[0].GetFileName().GetLength();
    for (std::size_t i = 1; i < words.size(); ++i) given += 1 + words[i].GetLength();
    const bool hasBlank = std::count(words.begin(), words.end(), CString(" ")) != 0;
    // "\n-": there is no parameter at position 0.
    CHECK(outcome[0] != '0' || hasBlank || outcome.StartsWith("0 " + CString(given) + "\n-"));
}

void theCaseMattersWhereItIsAskedFor(Strings table, Strings words, const CString& outcome) {
    for (CString& line : table) line.ToUpper();
    for (CString& word : words) word.ToUpper();
    SAME(parse(table, words, true), outcome.Upper());
    const CString upper = words[0], lower = upper.Lower();
    CHECK((parse({"1!" + upper}, {"", lower}, true)[0] == '0') == (upper == lower));
}

// The value begins with a quote, so that a path goes on with the word, too.
void aValueEndsAtTheNextSwitch(const CString& word) {
    for (const char* parameter : {"2/a:", "3/a:"}) {
        const CString outcome = parse({parameter, "1/b"}, {"", "/a:\"", word, "/b"}, true);
        CHECK(word == "/b" ||
              outcome.EndsWith("\n+\" " + CString(word == " " ? "" : word) + "\n+\n-"));
    }
}

// Without an "F", the bytes hold no stamp of their own. A line feed stands for NUL.
void aStampIsFoundAfterAnyBytes(std::string bytes, const std::string& version) {
    const std::string path = scratch("program");
    bytes.erase(std::remove(bytes.begin(), bytes.end(), 'F'), bytes.end());
    for (const char c : "FileVersion\n\n" + version + "\n") bytes += {c == '\n' ? '\0' : c, '\0'};
    for (const bool isWhole : {true, false}) {
        CString read = "old";
        std::ofstream(path) << bytes;
        CHECK(CMyFileIO(path.c_str()).GetFileVersion(read) == isWhole);
        SAME(read, ("old" + version).c_str());
        bytes.pop_back();
    }
}

void versionsAreOrdered(const CString& first, const CString& second) {
    const int order = CMyFileIO::CompareFileVersion(first, second);
    CHECK(CMyFileIO::CompareFileVersion(second, first) == -order);
    CHECK(CMyFileIO::CompareFileVersion(" " + first + " z9\n", second) == order);
    CHECK(CMyFileIO::CompareFileVersion("1." + first, "0." + second) == 1);
    CHECK(CMyFileIO::CompareFileVersion("1.2.3.4." + first, "1.2.3.4." + second) == 0);
}

extern "C" int LLVMFuzzerTestOneInput(const unsigned char* data, std::size_t size) {
    const Texts input = parts({data, data + size}, "%%\n", 4);
    Strings table, words = strings(parts(input[1], "\n"));
    for (const CString& line : strings(parts(input[0], "\n")))
        if (line[0] >= '0' && line[0] <= '3') table.push_back(line);
    aValueEndsAtTheNextSwitch(words.back());
    const Strings versions = strings(parts(input[3], "\n", 2));
    aStampIsFoundAfterAnyBytes(input[2], (versions[0] + "1").c_str());
    versionsAreOrdered(versions[0], versions[1]);
    if (table.empty()) return 0;
    const CString outcome = parse(table, words, false);
    aSuccessfulParseCountsAllCharacters(words, outcome);
    theCaseMattersWhereItIsAskedFor(table, words, outcome);
    return 0;
}
