#pragma once

#include <QSplitter>

/// Columns with a hairline between them, which can be taken hold of a few pixels beside it. No column can be dragged
/// away altogether.
class ColumnSplitter final : public QSplitter {
    Q_OBJECT

public:
    explicit ColumnSplitter(QWidget *parent = nullptr);

protected:
    [[nodiscard]] QSplitterHandle *createHandle() override;
};
