// SPDX-License-Identifier: Apache-2.0
#include "pages/preferences/security/FileTypeTable.h"

#include <QTextCursor>
#include <QTextDocument>
#include <QTextEdit>

#include <algorithm>
#include <functional>

namespace {

constexpr int levelCount = 4;
constexpr QLatin1Char bar('|');
constexpr QLatin1Char colon(':');

int levelOf(const QString &part)
{
    bool isNumber = false;
    const int level = part.section(colon, 1).toInt(&isNumber);
    return isNumber && level >= 0 && level < levelCount ? level : -1;
}

QString extensionOf(const QString &part)
{
    return part.section(colon, 0, 0);
}

bool isExtension(const QString &text)
{
    return text.size() > 1 && text.startsWith(QLatin1Char('.')) && !text.contains(bar) &&
           !text.contains(colon);
}

bool isFileType(const QString &part)
{
    return part.count(colon) == 1 && isExtension(extensionOf(part)) && levelOf(part) >= 0;
}

QString partOf(const QString &extension, int level)
{
    return extension + colon + QString::number(level);
}

} // namespace

FileTypeTable::FileTypeTable(QTextEdit *field)
    : QAbstractTableModel(field)
    , m_field(field)
{
    // The field itself is silent while a program fills it.
    connect(field->document(), &QTextDocument::contentsChanged, this, &FileTypeTable::readField);
    readField();
}

QStringList FileTypeTable::levels()
{
    return {tr("Ask; may always be allowed"), tr("Ask; may always be allowed or refused"), tr("Open"),
            tr("Do not open")};
}

void FileTypeTable::readField()
{
    const QString text = m_field->toPlainText();
    if (!m_parts.isEmpty() && text == m_parts.join(bar))
        return;
    beginResetModel();
    m_parts = text.split(bar);
    m_places.clear();
    for (int place = 0; place < m_parts.size(); ++place) {
        if (isFileType(m_parts.at(place)))
            m_places += place;
    }
    endResetModel();
}

/// As one step that the field can undo.
void FileTypeTable::writeField()
{
    QTextCursor cursor(m_field->document());
    cursor.select(QTextCursor::Document);
    cursor.insertText(m_parts.join(bar));
}

int FileTypeTable::addType()
{
    if (m_parts.join(bar).trimmed().isEmpty())
        m_parts = QStringList{QStringLiteral("version:1"), QString()};
    // The list ends with a bar.
    const bool isEnded = m_parts.constLast().trimmed().isEmpty();
    const int place = static_cast<int>(m_parts.size()) - (isEnded ? 1 : 0);
    m_parts.insert(place, partOf(QStringLiteral(".new"), levelCount - 1));
    if (!isEnded)
        m_parts += QString();
    beginInsertRows({}, rowCount(), rowCount());
    m_places += place;
    endInsertRows();
    writeField();
    return rowCount() - 1;
}

void FileTypeTable::removeTypes(QVector<int> rows)
{
    std::sort(rows.begin(), rows.end(), std::greater<>());
    beginResetModel();
    for (const int row : rows) {
        m_parts.removeAt(m_places.takeAt(row));
        for (int later = row; later < m_places.size(); ++later)
            --m_places[later];
    }
    endResetModel();
    writeField();
}

int FileTypeTable::rowCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : static_cast<int>(m_places.size());
}

int FileTypeTable::columnCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : ColumnCount;
}

QVariant FileTypeTable::data(const QModelIndex &index, int role) const
{
    const QString &part = m_parts.at(m_places.at(index.row()));
    const bool isText = role == Qt::DisplayRole || role == Qt::EditRole;
    if (index.column() == ExtensionColumn)
        return isText ? extensionOf(part) : QVariant();
    if (role == Qt::EditRole)
        return levelOf(part);
    return isText ? levels().at(levelOf(part)) : QVariant();
}

QVariant FileTypeTable::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (orientation != Qt::Horizontal || role != Qt::DisplayRole)
        return {};
    return section == ExtensionColumn ? tr("File Type") : tr("When It Is Opened");
}

Qt::ItemFlags FileTypeTable::flags(const QModelIndex &index) const
{
    return QAbstractTableModel::flags(index) | Qt::ItemIsEditable;
}

bool FileTypeTable::setData(const QModelIndex &index, const QVariant &value, int role)
{
    QString &part = m_parts[m_places.at(index.row())];
    const bool isLevel = index.column() == LevelColumn;
    const QString extension = isLevel ? extensionOf(part) : value.toString().trimmed();
    const int level = isLevel ? value.toInt() : levelOf(part);
    if (role != Qt::EditRole || !isExtension(extension) || level < 0 || level >= levelCount)
        return false;
    part = partOf(extension, level);
    emit dataChanged(index, index);
    writeField();
    return true;
}
