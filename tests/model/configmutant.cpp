// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include "configmutant.h"

#include <QList>
#include <QRandomGenerator>

namespace {

/// Pieces that turn one meaning into another when they land in the right place.
const QList<QByteArray> Pieces = {"<",
                                  ">",
                                  "/>",
                                  "\"",
                                  "'",
                                  "&",
                                  "&amp;",
                                  "&#10;",
                                  "&#x1F600;",
                                  "<!--",
                                  "-->",
                                  "<![CDATA[",
                                  "]]>",
                                  "<?a b?>",
                                  "<!DOCTYPE a>",
                                  "]",
                                  " ",
                                  "\n",
                                  "\r\n",
                                  "\t",
                                  "=",
                                  "-",
                                  "0",
                                  "9",
                                  "index",
                                  "true",
                                  "false",
                                  "net",
                                  "bus",
                                  "kind=\"net\"",
                                  "enabled=\"true\"",
                                  "<Member name=\"m\"/>",
                                  "<Signal name=\"s\"/>",
                                  "</Signal>",
                                  "<ProbeIn index=\"1\"/>",
                                  "<Core index=\"1\"/>",
                                  "<Version>1.0</Version>",
                                  QByteArray(1, '\0'),
                                  "\xff",
                                  "\xc3\xa4",
                                  "\xef\xbb\xbf",
                                  "\xed\xa0\xbd"};

/// Puts a character in front of the next name. Most characters are allowed, so that files which are
/// read and written again are as common as refused ones.
void changeName(QByteArray *content, int from, QRandomGenerator *random)
{
    const QByteArray start = "name=\"";
    const int position = content->indexOf(start, from);
    if (position >= 0)
        content->insert(position + start.size(), char(random->bounded(1, 128)));
}

} // namespace

QByteArray mutant(QByteArray content, QRandomGenerator *random)
{
    const int changes = random->bounded(1, 3);
    for (int i = 0; i < changes && !content.isEmpty(); ++i) {
        const int from = random->bounded(content.size());
        const int size = qMin(random->bounded(1, 40), content.size() - from);
        switch (random->bounded(12)) {
        case 0:
            content[from] = char(random->bounded(256));
            break;
        case 1:
            content.remove(from, size);
            break;
        case 2:
            content.insert(from, content.mid(from, size));
            break;
        case 3:
            content.insert(random->bounded(content.size()), content.mid(from, size));
            break;
        case 4:
            content.insert(from, Pieces.at(random->bounded(Pieces.size())));
            break;
        default:
            changeName(&content, from, random);
            break;
        }
    }
    return content;
}
