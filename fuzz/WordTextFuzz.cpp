#include "exchange/WordText.h"

#include "support/PlainWordText.h"

#include <QByteArrayView>
#include <QString>

#include <cstdint>
#include <cstdlib>

/// The scanner and the steps taken one by one must agree on any text.
extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    const QString text = QString::fromUtf8(QByteArrayView(data, qsizetype(size)));
    if (WordText::plainText(text) != PlainWordText::plainText(text))
        std::abort();
    if (WordText::decodeNumericEntities(text) != PlainWordText::decodeNumericEntities(text))
        std::abort();
    return 0;
}
