// SPDX-License-Identifier: Apache-2.0
#include "pages/EnteredText.h"

#include "config/XmlText.h"

#include <QDropEvent>
#include <QLineEdit>
#include <QMimeData>
#include <QTextCursor>
#include <QTextDocument>
#include <QTextEdit>
#include <QValidator>

#include <algorithm>
#include <memory>

namespace {

/// Accepts every text, after taking out of it what does not belong there.
class XmlTextValidator : public QValidator
{
public:
    using QValidator::QValidator;

    State validate(QString &input, int &position) const override
    {
        position = static_cast<int>(xmlText(input.left(position)).size());
        input = xmlText(input);
        return Acceptable;
    }
};

/// Refuses files that are dropped, which would leave their paths in the text; what refuses them is seen.
class FileRefusal : public QObject
{
public:
    using QObject::QObject;

    bool eventFilter(QObject *watched, QEvent *event) override
    {
        const bool isDrop = event->type() == QEvent::DragEnter || event->type() == QEvent::Drop;
        if (!isDrop || !static_cast<QDropEvent *>(event)->mimeData()->hasUrls())
            return QObject::eventFilter(watched, event);
        event->ignore();
        return true;
    }
};

/// Where a text was changed last.
struct Change
{
    int position = 0;
    int added = 0;
};

/// Character by character and from the end, so that every cursor stays where it belongs.
void removeUnfit(QTextCursor &cursor, const QString &text, int start)
{
    cursor.joinPreviousEditBlock();
    for (int place = static_cast<int>(text.size()) - 1; place >= 0; --place) {
        if (isXmlUnit(text, place))
            continue;
        cursor.setPosition(start + place);
        cursor.setPosition(start + place + 1, QTextCursor::KeepAnchor);
        cursor.removeSelectedText();
    }
    cursor.endEditBlock();
}

/// Only what the change has brought is looked at: what an import has brought before is none of its business.
void purge(QTextDocument *document, const Change &change)
{
    const int end = std::min(change.position + change.added, document->characterCount() - 1);
    const int start = std::min(change.position, end);
    QTextCursor cursor(document);
    cursor.setPosition(start);
    cursor.setPosition(end, QTextCursor::KeepAnchor);
    const QString entered = cursor.selectedText();
    if (!isXmlText(entered))
        removeUnfit(cursor, entered, start);
}

} // namespace

void takeXmlTextOnly(QLineEdit *field)
{
    field->setValidator(new XmlTextValidator(field));
    field->installEventFilter(new FileRefusal(field));
}

void takeXmlTextOnly(QTextEdit *field)
{
    field->viewport()->installEventFilter(new FileRefusal(field));
    const auto change = std::make_shared<Change>();
    QObject::connect(field->document(), &QTextDocument::contentsChange, field,
                     [change](int position, int, int added) {
                         *change = {position, added};
                     });
    QObject::connect(field, &QTextEdit::textChanged, field,
                     [field, change] { purge(field->document(), *change); });
}
