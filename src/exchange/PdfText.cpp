#include "exchange/PdfText.h"

#include "exchange/ImportStep.h"

#include <poppler-document.h>
#include <poppler-global.h>
#include <poppler-page.h>

#include <limits>
#include <memory>
#include <string>

namespace {

void silenceMessages()
{
    static const bool silenced = [] {
        poppler::set_debug_error_function([](const std::string &, void *) {}, nullptr);
        return true;
    }();
    Q_UNUSED(silenced)
}

/// `bytes` must outlive the document, which doesn't copy them.
std::unique_ptr<poppler::document> opened(QByteArrayView bytes)
{
    if (bytes.isEmpty() || bytes.size() > std::numeric_limits<int>::max())
        return nullptr;
    silenceMessages();
    std::unique_ptr<poppler::document> document(poppler::document::load_from_raw_data(bytes.data(), int(bytes.size())));
    // Counting the pages of a locked document isn't safe.
    return document && !document->is_locked() ? std::move(document) : nullptr;
}

QString textOf(const poppler::page &page)
{
    const poppler::ustring text = page.text({}, poppler::page::non_raw_non_physical_layout);
    return QString::fromUtf16(reinterpret_cast<const char16_t *>(text.data()), qsizetype(text.size()));
}

} // namespace

std::optional<QStringList> PdfText::pages(QByteArrayView bytes, const std::function<bool()> &mayGoOn)
{
    const std::unique_ptr<poppler::document> document = opened(bytes);
    if (!document)
        return {};
    QStringList texts;
    for (int index = 0; index < document->pages(); ++index) {
        if (!mayGoOn())
            throw ImportStopped();
        const std::unique_ptr<poppler::page> page(document->create_page(index));
        texts.append(page ? textOf(*page) : QString());
    }
    return texts;
}
