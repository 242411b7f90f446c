#include "XmlDocument.h"

#include <algorithm>

#include <QFile>
#include <QXmlStreamReader>

#include "Errors.h"
#include "Text.h"

namespace {

XmlNode::Attributes attributesOf(const QXmlStreamReader& reader) {
    XmlNode::Attributes result;
    for (const QXmlStreamAttribute& attribute : reader.attributes())
        result.emplace_back(attribute.qualifiedName().toString(), attribute.value().toString());
    return result;
}

// Builds the tree while the reader walks the file.
class Builder {
public:
    void startElement(QXmlStreamReader& reader) {
        if (++m_depth > XmlDocument::DepthLimit)
            reader.raiseError(QStringLiteral("Elements are nested too deeply."));
        else if (++m_nodes > XmlDocument::NodeLimit)
            reader.raiseError(QStringLiteral("There are too many elements."));
        else
            add(reader.qualifiedName().toString(), attributesOf(reader));
    }

    void endElement() {
        --m_depth;
        m_open.pop_back();
    }

    std::unique_ptr<XmlNode> takeRoot() { return std::move(m_root); }

private:
    void add(QString name, XmlNode::Attributes attributes) {
        if (m_open.empty()) {
            m_root = std::make_unique<XmlNode>(std::move(name), std::move(attributes), nullptr);
            m_open.push_back(m_root.get());
        } else {
            m_open.push_back(m_open.back()->append(std::move(name), std::move(attributes)));
        }
    }

    std::unique_ptr<XmlNode> m_root;
    std::vector<XmlNode*> m_open;
    int m_depth = 0;
    int m_nodes = 0;
};

}  // namespace

bool XmlNode::is(QStringView name) const {
    return Text::equal(m_name, name);
}

QString XmlNode::GetAttribute(QStringView name) const {
    const auto found = std::find_if(m_attributes.begin(), m_attributes.end(),
                                    [name](const auto& attribute) { return attribute.first == name; });
    return found == m_attributes.end() ? QString() : found->second;
}

XmlNode* XmlNode::append(QString name, Attributes attributes) {
    m_children.push_back(std::make_unique<XmlNode>(std::move(name), std::move(attributes), this));
    return m_children.back().get();
}

XmlDocument XmlDocument::LoadXml(const FolderItem& item) {
    QFile file(item.AbsolutePath());
    if (!item.isFile() || !file.open(QIODevice::ReadOnly) || file.size() > FileLimit)
        throw XmlError(QStringLiteral("%1 cannot be read.").arg(item.Name()));
    QXmlStreamReader reader(&file);
    Builder builder;
    while (!reader.atEnd()) {
        reader.readNext();
        if (reader.isStartElement())
            builder.startElement(reader);
        else if (reader.isEndElement())
            builder.endElement();
    }
    if (reader.hasError())
        throw XmlError(QStringLiteral("%1, line %2: %3")
                           .arg(item.Name())
                           .arg(reader.lineNumber())
                           .arg(reader.errorString()));
    XmlDocument document;
    document.m_root = builder.takeRoot();
    return document;
}
