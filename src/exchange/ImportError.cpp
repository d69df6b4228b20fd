#include "exchange/ImportError.h"

#include <utility>

using namespace Qt::StringLiterals;

ImportError::ImportError(Kind kind, QString fileName) : m_kind(kind), m_fileName(std::move(fileName))
{
}

QString ImportError::description() const
{
    // Put together and not filled in: a file name may hold what looks like a place to fill.
    switch (m_kind) {
    case Kind::unreadable:
        return u"Couldn't read "_s + m_fileName + u'.';
    case Kind::noTextLayer:
        return u"No text layer found in "_s + m_fileName
            + u" — it looks like a scanned PDF. OCR isn't supported yet."_s;
    case Kind::empty:
        return u"The document appears to be empty."_s;
    }
    Q_UNREACHABLE();
}
