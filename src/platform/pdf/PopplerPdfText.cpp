#include "platform/pdf/PopplerPdfText.h"

#include <poppler-qt6.h>

#include <array>
#include <memory>
#include <utility>

namespace kelvo {
namespace {

/// The ligatures from U+FB00 on.
constexpr std::array<const char*, 7> ligatures = {"ff", "fi", "fl", "ffi", "ffl", "st", "st"};

QString spelledOut(QString text) {
    for (std::size_t i = 0; i < ligatures.size(); ++i) {
        text.replace(QChar(static_cast<char16_t>(0xFB00 + i)), QLatin1String(ligatures[i]));
    }
    return text;
}

} // namespace

PopplerPdfText::PopplerPdfText() {
    // Poppler tells standard error about every flaw of a document; the empty text tells enough.
    Poppler::setDebugErrorFunction([](const QString&, const QVariant&) {}, {});
}

std::string PopplerPdfText::text(std::string_view bytes) {
    const auto document = Poppler::Document::loadFromData(
        QByteArray(bytes.data(), static_cast<qsizetype>(bytes.size())));
    // A locked document has no pages to ask for: asking crashes.
    if (!document || document->isLocked()) return {};
    QString whole;
    for (int i = 0; i < document->numPages(); ++i) {
        const std::unique_ptr<Poppler::Page> page = document->page(i);
        if (!page) continue;
        const QString text = page->text(QRectF());
        if (text.trimmed().isEmpty()) continue;
        if (!whole.isEmpty() && !whole.endsWith(QLatin1Char('\n'))) whole += QLatin1Char('\n');
        whole += text;
    }
    return spelledOut(std::move(whole)).toStdString();
}

} // namespace kelvo
