// SPDX-License-Identifier: MIT
#include "help/HelpPage.h"

#include <QXmlStreamReader>

namespace tunedeck {

namespace {
void readElement(QXmlStreamReader &xml, HelpPage &page)
{
    const QXmlStreamAttributes attributes = xml.attributes();
    const QString name = attributes.value(QLatin1String("name")).toString();
    if (xml.name() == u"title") {
        page.title = xml.readElementText().simplified();
    } else if (xml.name() == u"meta" && name == u"keywords") {
        page.keywords = attributes.value(QLatin1String("content")).toString();
    } else if (xml.name() == u"a" && !name.isEmpty()) {
        page.sections.append({name, xml.readElementText(QXmlStreamReader::IncludeChildElements).simplified(), {}});
    }
}

void readText(QStringView text, HelpPage &page)
{
    if (!page.sections.isEmpty()) {
        page.sections.last().text.append(text);
    }
}
} // namespace

std::optional<HelpPage> readHelpPage(const QByteArray &html)
{
    HelpPage page{QString::fromUtf8(html), {}, {}, {}};
    QXmlStreamReader xml(html);
    while (!xml.atEnd()) {
        xml.readNext();
        if (xml.isStartElement()) {
            readElement(xml, page);
        } else if (xml.isCharacters()) {
            readText(xml.text(), page);
        } else if (xml.isEndElement()) {
            // This keeps the words of two table cells apart.
            readText(u" ", page);
        }
    }
    if (xml.hasError() || page.title.isEmpty() || page.sections.isEmpty()) {
        return std::nullopt;
    }
    return page;
}

} // namespace tunedeck
