// An XML file as a small tree of its elements and attributes.
#pragma once

#include <memory>
#include <utility>
#include <vector>

#include <QString>

#include "FolderItem.h"

class XmlNode {
public:
    using Attributes = std::vector<std::pair<QString, QString>>;
    using Children = std::vector<std::unique_ptr<XmlNode>>;

    XmlNode(QString name, Attributes attributes, const XmlNode* parent)
        : m_name(std::move(name)), m_attributes(std::move(attributes)), m_parent(parent) {}

    const QString& Name() const { return m_name; }
    // Element names are compared without letter case.
    bool is(QStringView name) const;
    // None for the document element.
    const XmlNode* Parent() const { return m_parent; }
    const Children& children() const { return m_children; }
    // The empty string for an attribute that is not there.
    QString GetAttribute(QStringView name) const;

    XmlNode* append(QString name, Attributes attributes);

private:
    QString m_name;
    Attributes m_attributes;
    const XmlNode* m_parent;
    Children m_children;
};

class XmlDocument {
public:
    static constexpr qint64 FileLimit = 64 << 20;  // bytes
    static constexpr int DepthLimit = 200;         // elements inside each other
    static constexpr int NodeLimit = 200'000;

    // Throws XmlError when the file is not well-formed, cannot be read, or goes past a limit.
    static XmlDocument LoadXml(const FolderItem& item);

    const XmlNode& DocumentElement() const { return *m_root; }

private:
    std::unique_ptr<XmlNode> m_root;
};
