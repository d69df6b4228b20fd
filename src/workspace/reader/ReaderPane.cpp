#include "workspace/reader/ReaderPane.h"

#include "kit/controls/EmptyState.h"
#include "kit/theme/Theme.h"
#include "library/LibraryStore.h"
#include "platform/ThisComputer.h"
#include "workspace/reader/ReaderView.h"

#include <QPainter>
#include <QStackedLayout>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace {

constexpr int iconSize = 44;

} // namespace

ReaderPane::ReaderPane(LibraryStore &store, QWidget *parent)
    : QWidget(parent),
      m_store(store),
      m_pages(new QStackedLayout(this)),
      m_reader(new ReaderView(store)),
      m_welcome(new EmptyState(u"books.vertical"_s, iconSize, u"Welcome to Vorn"_s,
          u"Your qualitative analysis workspace.\nEverything stays on "_s + thisComputer() + u'.')),
      m_selectOne(new EmptyState(
          u"sidebar.left"_s, iconSize, u"Select a Document"_s, u"Choose a document from the list to start reading."_s))
{
    for (QWidget *page : {static_cast<QWidget *>(m_reader), m_welcome, m_selectOne})
        m_pages->addWidget(page);
    connect(&m_store.documents(), &Notifier::changed, this, &ReaderPane::render);
    connect(&m_store.selectedDocumentID(), &Notifier::changed, this, &ReaderPane::render);
    render();
}

void ReaderPane::render()
{
    const QList<Document> documents = m_store.documents().get(); // a copy: leaving a document may save its memo
    const auto found = m_store.selectedDocumentID().get()
        ? std::ranges::find(documents, *m_store.selectedDocumentID().get(), &Document::id)
        : documents.end();
    if (found != documents.end()) {
        m_reader->showDocument(*found);
        m_pages->setCurrentWidget(m_reader);
    } else {
        m_reader->showNothing();
        m_pages->setCurrentWidget(documents.isEmpty() ? m_welcome : m_selectOne);
    }
}

void ReaderPane::paintEvent(QPaintEvent *)
{
    QPainter(this).fillRect(rect(), Theme::colors().page);
}
