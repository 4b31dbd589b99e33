// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include "rootlist.h"

#include <netweir/internal/ground/itemat.h>

namespace NETWEIR::Internal {

namespace {

/// Texts and numbers one after another, so that different sequences give different keys.
class Key
{
public:
    Key &operator<<(const QString &text)
    {
        m_text += QString::number(text.size()) + QLatin1Char(':') + text;
        return *this;
    }
    Key &operator<<(qint64 number) { return *this << QString::number(number); }

    const QString &text() const { return m_text; }

private:
    QString m_text;
};

QString keyOf(Language language, const PartRoot &root)
{
    Key key;
    key << int(language) << root.library << root.unit << root.isTop << root.generics.size();
    for (auto generic = root.generics.begin(); generic != root.generics.end(); ++generic)
        key << generic.key() << generic->kind << generic->text;
    for (const PartPort &port : root.ports)
        key << port.name << int(port.direction) << port.width;
    return key.text();
}

} // namespace

int RootList::add(Language language, const PartRoot &root)
{
    const QString key = keyOf(language, root);
    const auto known = m_numbers.constFind(key);
    if (known != m_numbers.constEnd())
        return *known;
    m_numbers.insert(key, size());
    m_roots.push_back({language, root});
    return size() - 1;
}

const PartRoot &RootList::at(int number) const
{
    return itemAt(m_roots, number).root;
}

Language RootList::language(int number) const
{
    return itemAt(m_roots, number).language;
}

} // namespace NETWEIR::Internal
