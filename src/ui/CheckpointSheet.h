#pragma once

#include <QtQml/qqmlregistration.h>

#include <QQuickPaintedItem>
#include <QString>

namespace kelvo {

/// The page of a checkpoint as it is printed: A4, ink on white, drawn by the same function that
/// writes the PDF. A checkpoint of many logs takes several pages; the item shows the first.
class CheckpointSheet : public QQuickPaintedItem {
    Q_OBJECT
    QML_ELEMENT

    /// The checkpoint's blocks; what is none is an empty sheet.
    Q_PROPERTY(QString checkpoint READ checkpoint WRITE setCheckpoint NOTIFY changed)
    /// What the page says, line by line, for assistive technology; hashes in groups of four.
    Q_PROPERTY(QString spoken READ spoken NOTIFY changed)

public:
    explicit CheckpointSheet(QQuickItem* parent = nullptr);

    const QString& checkpoint() const { return checkpoint_; }
    void setCheckpoint(const QString& checkpoint);
    QString spoken() const;
    void paint(QPainter* painter) override;

Q_SIGNALS:
    void changed();

private:
    QString checkpoint_;
};

/// Writes the pages of a checkpoint as a PDF file. False where `checkpoint` is none or the file
/// cannot be written.
bool writeCheckpointPdf(const QString& checkpoint, const QString& file);

} // namespace kelvo
