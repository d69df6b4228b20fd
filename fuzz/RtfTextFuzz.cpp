#include "Require.h"
#include "exchange/RtfText.h"

#include <cstdint>

namespace {

bool isPlain(QStringView text)
{
    for (const QChar unit : text) {
        if (unit.category() == QChar::Other_Control && unit != u'\t' && unit != u'\n')
            return false;
    }
    return text.isValidUtf16();
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    const QByteArrayView document(data, qsizetype(size));
    const std::optional<QString> text = RtfText::plainText(document);
    require(!text || (isPlain(*text) && text->size() <= document.size()));
    return 0;
}
