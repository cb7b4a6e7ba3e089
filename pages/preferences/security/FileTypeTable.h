// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QAbstractTableModel>
#include <QStringList>
#include <QVector>

class QTextEdit;

/// The file types in a permission list, one row each: extension and level in words. The list's text is what
/// counts: it is rewritten only by an edit in the table, and what is no file type stays in it as it stands.
/// Owned by the field with the text.
class FileTypeTable : public QAbstractTableModel
{
    Q_OBJECT

public:
    enum Column { ExtensionColumn, LevelColumn, ColumnCount };

    explicit FileTypeTable(QTextEdit *field);

    /// The words for the levels 0 to 3.
    static QStringList levels();

    /// Appends a file type that may not be opened, under a name to be changed, and gives its row.
    int addType();

    /// Takes the rows' file types out of the list.
    void removeTypes(QVector<int> rows);

    int rowCount(const QModelIndex &parent = {}) const override;
    int columnCount(const QModelIndex &parent = {}) const override;
    QVariant data(const QModelIndex &index, int role) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;
    Qt::ItemFlags flags(const QModelIndex &index) const override;

    /// A level is its number. An extension begins with a dot and holds none of the list's own marks; others
    /// are refused.
    bool setData(const QModelIndex &index, const QVariant &value, int role) override;

private:
    void readField();
    void writeField();

    QTextEdit *const m_field;
    QStringList m_parts;   ///< of the whole text, between the bars
    QVector<int> m_places; ///< of the rows' file types among the parts
};
