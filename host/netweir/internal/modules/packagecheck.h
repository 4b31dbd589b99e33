// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <netweir/internal/verilog/scopescan.h>

#include <QByteArray>
#include <QByteArrayList>
#include <QHash>
#include <QString>
#include <QStringList>
#include <QVector>

namespace NETWEIR::Internal {

class DesignScopes;
class PreprocessedText;
struct DesignSources;

/// What is wrong with the packages of a design: missing ones, second ones and circles.
class PackageCheck
{
public:
    /// All must live as long as this.
    PackageCheck(const DesignSources &sources, const PreprocessedText &text,
                 const DesignScopes &scopes);

    /// What cannot be put into order: packages that import each other in a circle, and imports of
    /// packages that no file declares.
    QStringList errors() const;

    /// Packages that are declared twice.
    QStringList warnings() const;

    /// Names in front of a "::" that are neither packages nor types. A reason when the elaborator
    /// fails.
    QStringList suspicions() const;

    /// The packages and other names that errors() and suspicions() name as undeclared, in the order
    /// of their uses.
    QByteArrayList missingPackages() const;

    /// Whether a text uses what errors() or suspicions() name.
    bool usesMissing(int text) const { return m_usesMissing[text]; }

private:
    /// The first use of a package that no file declares.
    struct MissingPackage
    {
        int text;
        PackageUse use; ///< Imported when any use is an import.
    };

    void findMissing();
    bool isMissing(const PackageUse &use) const;
    QStringList messagesOfMissing(bool imported) const;
    QString messageOf(const MissingPackage &missing,
                      const QHash<QByteArray, QString> &misread) const;
    QHash<QByteArray, QString> misreadPackages() const;
    QString circleError() const;
    QString messageAt(int text, const PackageUse &use, const QString &words) const;

    const DesignSources &m_sources;
    const PreprocessedText &m_text;
    const DesignScopes &m_scopes;
    QVector<MissingPackage> m_missing;
    QVector<bool> m_usesMissing; ///< By text.
};

} // namespace NETWEIR::Internal
