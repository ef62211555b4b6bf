// The client's language file: lines of known meaning, or arbitrary contents, as the first byte
// selects.
#include "DisplayLanguage.h"
#include "Fuzz.h"
#include "Redated.h"

#include <fuzzer/FuzzedDataProvider.h>

#include <string_view>

namespace {

const QString fileName = QStringLiteral("AppData/Roaming/QZviewer/language.ini");

DisplayLanguage languageOf(const QByteArray &file)
{
    static ScratchFolder home;
    home.file(fileName, file);
    redate(home, fileName);
    const DisplayLanguage language = chooseLanguage(
        {home.path(), {QStringLiteral("D:\\Dir\\QZviewer.exe,0"), QStringLiteral("\\")}});
    demand(home.read(fileName) == file, "reading changes nothing");
    return language;
}

struct Value
{
    const char *text;
    bool isOne;
};

/// Lines whose meaning needs no parser: the last "lang" in the section "language" counts.
void tryKnownLines(FuzzedDataProvider &input)
{
    static const char *const sections[] = {"language", "window", "General", "LANGUAGE", "lang"};
    static const char *const keys[] = {"lang", "font", "Lang", "lang\\x", "language/lang", "lan"};
    static const Value values[] = {
        {"1", true},    {"0", false},     {"2", false},   {"-1", false},     {"01", true},
        {"11", false},  {" 1", true},     {"1 ", true},   {"", false},       {"1st", false},
        {"0x1", false}, {"1.0", false},   {"1,1", false}, {"\"1\"", true},   {"true", false},
        {"1;x", true},  {"\"0\"", false}, {"one", false}, {"\"1,1\"", false}};
    static const char *const lineEnds[] = {"\n", "\r\n"};
    QByteArray file;
    std::string_view section;
    bool english = false;
    while (input.remaining_bytes() > 0) {
        switch (input.ConsumeIntegralInRange(0, 3)) {
        case 0:
            section = input.PickValueInArray(sections);
            file += '[' + QByteArray(section.data(), int(section.size())) + ']';
            break;
        case 1:
            file += "; lang=1";
            break;
        default: {
            const std::string_view key = input.PickValueInArray(keys);
            const Value value = input.PickValueInArray(values);
            file += QByteArray(key.data(), int(key.size())) + '=' + value.text;
            if (section == "language" && key == "lang")
                english = value.isOne;
            break;
        }
        }
        file += input.PickValueInArray(lineEnds);
    }
    demand(languageOf(file) == (english ? DisplayLanguage::English : DisplayLanguage::Chinese),
           "the last word on the language");
}

void tryAnyFile(const QByteArray &rest)
{
    const DisplayLanguage language = languageOf(rest);
    demand(languageOf(rest) == language, "the same file says the same");
    // Keys can contain escapes too.
    if (rest.contains("lang") || rest.contains('%'))
        return;
    demand(language == DisplayLanguage::Chinese, "what is not said is not heard");
    demand(languageOf("[language]\nlang=1\n" + rest) == DisplayLanguage::English,
           "what follows changes nothing");
}

} // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    if (size == 0)
        return 0;
    if (data[0] % 2 == 0) {
        FuzzedDataProvider input(data + 1, size - 1);
        tryKnownLines(input);
    } else {
        tryAnyFile(QByteArray(reinterpret_cast<const char *>(data + 1), int(size - 1)));
    }
    return 0;
}
