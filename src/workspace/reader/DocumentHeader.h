#pragma once

#include <QWidget>

class ElidedLabel;
class QLabel;
class SelectableTitle;
struct Document;

/// A document's title, and in a line below it what kind of text it is, how long, from when and how much of it is coded.
class DocumentHeader final : public QWidget {
    Q_OBJECT

public:
    explicit DocumentHeader(QWidget *parent = nullptr);

    void showDocument(const Document &document, qsizetype codingCount);

private:
    SelectableTitle *m_title;
    QLabel *m_kind;
    ElidedLabel *m_facts;
};
