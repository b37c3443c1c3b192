// SPDX-License-Identifier: MIT
#include "widgets/accessibleLineEdits.h"

#include <QAccessible>
#include <QAccessibleWidget>
#include <QFontMetrics>
#include <QLineEdit>
#include <QString>
#include <QTextBoundaryFinder>

#include <algorithm>
#include <optional>
#include <utility>

namespace tunedeck {

namespace {
/// From `start` up to, but not including, `end`.
struct Range {
    int start;
    int end;
};

std::optional<QTextBoundaryFinder::BoundaryType> boundaryOf(QAccessible::TextBoundaryType type)
{
    switch (type) {
    case QAccessible::CharBoundary:
        return QTextBoundaryFinder::Grapheme;
    case QAccessible::WordBoundary:
        return QTextBoundaryFinder::Word;
    case QAccessible::SentenceBoundary:
        return QTextBoundaryFinder::Sentence;
    default:
        // A line edit is one line and one paragraph.
        return std::nullopt;
    }
}

/// Divides a text. Each part begins where a word, sentence or character begins and reaches to the next beginning, so
/// that every offset is in one part.
class TextParts {
public:
    TextParts(const QString &text, QAccessible::TextBoundaryType type)
        : m_finder(boundaryOf(type).value_or(QTextBoundaryFinder::Grapheme), text)
        , m_length(static_cast<int>(text.size()))
        , m_isWhole(!boundaryOf(type))
    {
    }

    /// No value if `offset` is not in the text. The end of the text is in the last part.
    std::optional<Range> at(int offset)
    {
        if (offset < 0 || offset > m_length || m_length == 0) {
            return std::nullopt;
        }
        const int inside = std::min(offset, m_length - 1);
        return Range{isBeginning(inside) ? inside : beginningBefore(inside), beginningAfter(inside)};
    }

    std::optional<Range> before(int offset)
    {
        const std::optional<Range> part = at(offset);
        return part && part->start > 0 ? at(part->start - 1) : std::nullopt;
    }

    std::optional<Range> after(int offset)
    {
        const std::optional<Range> part = at(offset);
        return part && part->end < m_length ? at(part->end) : std::nullopt;
    }

private:
    bool isBeginning(int offset)
    {
        m_finder.setPosition(offset);
        return offset == 0 || (!m_isWhole && m_finder.boundaryReasons().testFlag(QTextBoundaryFinder::StartOfItem));
    }

    int beginningBefore(int offset)
    {
        do {
            --offset;
        } while (!isBeginning(offset));
        return offset;
    }

    int beginningAfter(int offset)
    {
        do {
            ++offset;
        } while (offset < m_length && !isBeginning(offset));
        return offset;
    }

    QTextBoundaryFinder m_finder;
    int m_length;
    bool m_isWhole;
};

class AccessibleLineEdit : public QAccessibleWidget,
                           public QAccessibleTextInterface,
                           public QAccessibleEditableTextInterface {
public:
    explicit AccessibleLineEdit(QLineEdit &lineEdit)
        : QAccessibleWidget(&lineEdit, QAccessible::EditableText)
        , m_lineEdit(lineEdit)
    {
    }

    void *interface_cast(QAccessible::InterfaceType type) override
    {
        if (type == QAccessible::TextInterface) {
            return static_cast<QAccessibleTextInterface *>(this);
        }
        if (type == QAccessible::EditableTextInterface) {
            return static_cast<QAccessibleEditableTextInterface *>(this);
        }
        return QAccessibleWidget::interface_cast(type);
    }

    [[nodiscard]] QString text(QAccessible::Text kind) const override
    {
        const QString text = kind == QAccessible::Value ? m_lineEdit.displayText() : QAccessibleWidget::text(kind);
        return kind == QAccessible::Name && text.isEmpty() ? m_lineEdit.placeholderText() : text;
    }
    void setText(QAccessible::Text kind, const QString &text) override
    {
        if (kind == QAccessible::Value) {
            replaceText(0, characterCount(), text);
        } else {
            QAccessibleWidget::setText(kind, text);
        }
    }
    [[nodiscard]] QAccessible::State state() const override
    {
        QAccessible::State state = QAccessibleWidget::state();
        state.editable = !m_lineEdit.isReadOnly();
        state.readOnly = m_lineEdit.isReadOnly();
        state.passwordEdit = m_lineEdit.echoMode() != QLineEdit::Normal;
        state.selectableText = true;
        return state;
    }

    void selection(int selectionIndex, int *startOffset, int *endOffset) const override
    {
        const bool isSelected = selectionIndex == 0 && m_lineEdit.hasSelectedText();
        *startOffset = isSelected ? m_lineEdit.selectionStart() : 0;
        *endOffset = isSelected ? m_lineEdit.selectionEnd() : 0;
    }
    [[nodiscard]] int selectionCount() const override { return m_lineEdit.hasSelectedText() ? 1 : 0; }
    void addSelection(int startOffset, int endOffset) override { setSelection(0, startOffset, endOffset); }
    void removeSelection(int selectionIndex) override
    {
        if (selectionIndex == 0) {
            m_lineEdit.deselect();
        }
    }
    void setSelection(int selectionIndex, int startOffset, int endOffset) override
    {
        if (const auto range = rangeOf(startOffset, endOffset); selectionIndex == 0 && range) {
            m_lineEdit.setSelection(range->start, range->end - range->start);
        }
    }

    [[nodiscard]] int cursorPosition() const override { return m_lineEdit.cursorPosition(); }
    void setCursorPosition(int position) override { m_lineEdit.setCursorPosition(position); }

    [[nodiscard]] QString text(int startOffset, int endOffset) const override
    {
        const auto range = rangeOf(startOffset, endOffset);
        return range ? m_lineEdit.displayText().sliced(range->start, range->end - range->start) : QString();
    }
    [[nodiscard]] QString textBeforeOffset(
        int offset, QAccessible::TextBoundaryType type, int *startOffset, int *endOffset) const override
    {
        return part(readableParts(type).before(offset), startOffset, endOffset);
    }
    [[nodiscard]] QString textAfterOffset(
        int offset, QAccessible::TextBoundaryType type, int *startOffset, int *endOffset) const override
    {
        return part(readableParts(type).after(offset), startOffset, endOffset);
    }
    [[nodiscard]] QString textAtOffset(
        int offset, QAccessible::TextBoundaryType type, int *startOffset, int *endOffset) const override
    {
        return part(readableParts(type).at(offset), startOffset, endOffset);
    }
    [[nodiscard]] int characterCount() const override { return static_cast<int>(m_lineEdit.displayText().size()); }

    /// Measured from the cursor, along text that runs to the right.
    [[nodiscard]] QRect characterRect(int offset) const override
    {
        if (offset < 0 || offset >= characterCount()) {
            return {};
        }
        const QRect cursor = m_lineEdit.inputMethodQuery(Qt::ImCursorRectangle).toRect();
        const int left = cursor.center().x() + widthUpTo(offset) - widthUpTo(m_lineEdit.cursorPosition());
        const QRect character(left, cursor.top(), widthUpTo(offset + 1) - widthUpTo(offset), cursor.height());
        return {m_lineEdit.mapToGlobal(character.topLeft()), character.size()};
    }
    [[nodiscard]] int offsetAtPoint(const QPoint &point) const override
    {
        return m_lineEdit.cursorPositionAt(m_lineEdit.mapFromGlobal(point));
    }
    void scrollToSubstring(int startIndex, int endIndex) override
    {
        m_lineEdit.setCursorPosition(endIndex);
        m_lineEdit.setCursorPosition(startIndex);
    }
    [[nodiscard]] QString attributes(int /*offset*/, int *startOffset, int *endOffset) const override
    {
        *startOffset = 0;
        *endOffset = characterCount();
        return {};
    }

    void deleteText(int startOffset, int endOffset) override { replaceText(startOffset, endOffset, {}); }
    void insertText(int offset, const QString &text) override { replaceText(offset, offset, text); }
    void replaceText(int startOffset, int endOffset, const QString &text) override
    {
        const auto range = rangeOf(startOffset, endOffset);
        if (range && !m_lineEdit.isReadOnly()) {
            m_lineEdit.setText(m_lineEdit.text().replace(range->start, range->end - range->start, text));
        }
    }

private:
    /// No value if the text does not reach from `start` to `end`. An end of -1 is the end of the text.
    [[nodiscard]] std::optional<Range> rangeOf(int start, int end) const
    {
        const Range range{start, end < 0 ? characterCount() : end};
        const bool isInside = range.start >= 0 && range.start <= range.end && range.end <= characterCount();
        return isInside ? std::optional(range) : std::nullopt;
    }

    /// A hidden text is not divided: where its words end must stay hidden, too.
    [[nodiscard]] TextParts readableParts(QAccessible::TextBoundaryType type) const
    {
        return {m_lineEdit.echoMode() == QLineEdit::Normal ? m_lineEdit.text() : QString(), type};
    }

    QString part(std::optional<Range> range, int *startOffset, int *endOffset) const
    {
        *startOffset = range ? range->start : -1;
        *endOffset = range ? range->end : -1;
        return range ? m_lineEdit.text().sliced(range->start, range->end - range->start) : QString();
    }

    [[nodiscard]] int widthUpTo(int offset) const
    {
        return m_lineEdit.fontMetrics().horizontalAdvance(m_lineEdit.displayText(), offset);
    }

    QLineEdit &m_lineEdit;
};

QAccessibleInterface *accessibleLineEdit(const QString &, QObject *object)
{
    auto *lineEdit = qobject_cast<QLineEdit *>(object);
    return lineEdit ? new AccessibleLineEdit(*lineEdit) : nullptr;
}
} // namespace

void installAccessibleLineEdits()
{
    // Qt keeps each factory once, however often it is installed.
    QAccessible::installFactory(accessibleLineEdit);
}

} // namespace tunedeck
