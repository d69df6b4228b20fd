#include "Require.h"
#include "exchange/RefiQdpxDocument.h"
#include "exchange/XmlReader.h"

#include <QBuffer>

using namespace RefiQdpx;

namespace {

void checkCodes(const ParsedDocument &document)
{
    std::vector<int> levels;
    for (const ParsedDocument::ParsedCode &code : document.codes) {
        require(!code.parent || *code.parent < levels.size()); // parents come first
        levels.push_back(code.parent ? levels[*code.parent] + 1 : 1);
        require(levels.back() <= 8);
        require(code.colorHex.size() == 7);
    }
    for (const std::optional<size_t> &code : document.codeOfTarget)
        require(!code || *code < document.codes.size());
}

void checkSources(const ParsedDocument &document)
{
    for (const ParsedDocument::Source &source : document.sources) {
        for (const auto &[range, target] : source.codedRanges) {
            require(range.location >= 0 && range.length > 0);
            require(target < document.codeOfTarget.size());
        }
        require(!source.content || source.content->isValidUtf8());
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    QByteArray bytes(reinterpret_cast<const char *>(data), qsizetype(size));
    QBuffer device(&bytes);
    device.open(QIODevice::ReadOnly);
    try {
        const ParsedDocument document = readProjectDocument(device);
        require(document.isProject || (document.codes.empty() && document.sources.empty()));
        checkCodes(document);
        checkSources(document);
    } catch (const XmlError &error) {
        require(!error.description().isEmpty());
    }
    return 0;
}
