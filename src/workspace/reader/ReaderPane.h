#pragma once

#include <QWidget>

class LibraryStore;
class QStackedLayout;
class ReaderView;

/// The right-hand column: the selected document, or a hint on what to do when none is selected.
class ReaderPane final : public QWidget {
    Q_OBJECT

public:
    explicit ReaderPane(LibraryStore &store, QWidget *parent = nullptr);

    [[nodiscard]] ReaderView &reader() const { return *m_reader; }

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    void render();

    LibraryStore &m_store;
    QStackedLayout *m_pages;
    ReaderView *m_reader;
    QWidget *m_welcome;
    QWidget *m_selectOne;
};
