#include "Require.h"
#include "exchange/WordText.h"

#include "support/PlainWordText.h"

#include <QByteArrayView>
#include <QString>

#include <cstdint>

/// The scanner agrees with its plain version on any text.
extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    const QString text = QString::fromUtf8(QByteArrayView(data, qsizetype(size)));
    require(WordText::plainText(text) == PlainWordText::plainText(text));
    require(WordText::decodeNumericEntities(text) == PlainWordText::decodeNumericEntities(text));
    return 0;
}
