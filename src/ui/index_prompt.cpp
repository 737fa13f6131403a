#include "ui/index_prompt.h"

#include "core/message_text.h"
#include "core/number_input.h"
#include "ui/dialogs.h"

QString indexNotANumberMessage(const QString& answer) {
    return QStringLiteral(
               "\"%1\" is not a number: write the index like 1.5 or 1,5.  "
               "Το \"%1\" δεν είναι αριθμός: γράψε το δείκτη όπως 1.5 ή 1,5.")
        .arg(QString::fromStdString(quotedForMessage(answer.trimmed().toStdString())));
}

QString indexOutOfRangeMessage() {
    const QString low = QString::number(kSmallestTypedIndex);
    const QString high = QString::number(kLargestTypedIndex);
    return QStringLiteral(
               "The index of refraction must lie between %1 and %2 (for example 1.33 or 1.5).  "
               "Ο δείκτης διάθλασης πρέπει να είναι από %1 έως %2 (για παράδειγμα 1.33 ή 1.5).")
        .arg(low, high);
}

std::optional<double> askTypedIndex(const QString& prompt) {
    const QString answer = inputBox(prompt);
    const TypedIndex typed = readTypedIndex(answer.toStdString());
    switch (typed.kind) {
    case TypedIndex::Kind::Cancelled: return std::nullopt;
    case TypedIndex::Kind::NotANumber: messageBox(indexNotANumberMessage(answer)); return std::nullopt;
    case TypedIndex::Kind::OutOfRange: messageBox(indexOutOfRangeMessage()); return std::nullopt;
    case TypedIndex::Kind::Valid: break;
    }
    return typed.value;
}
