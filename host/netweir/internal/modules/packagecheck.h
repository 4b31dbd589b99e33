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

/// Finds packages that are missing, declared twice, or in a circle.
class PackageCheck
{
public:
    /// All arguments must outlive this object.
    PackageCheck(const DesignSources &sources, const PreprocessedText &text,
                 const DesignScopes &scopes);

    /// Packages that need each other in a circle, and imports of packages that no file declares.
    QStringList errors() const;

    /// Second declarations of packages.
    QStringList warnings() const;

    /// Names in front of a "::" that are neither packages nor types. A reason when the elaborator
    /// fails.
    QStringList suspicions() const;

    /// The undeclared names in errors() and suspicions(), in the order of their uses.
    QByteArrayList missingPackages() const;

    /// Whether a text uses a name that is missing.
    bool usesMissing(int text) const { return m_usesMissing[text]; }

private:
    /// The first use of a package that no file declares.
    struct MissingPackage
    {
        int text;
        PackageUse use; ///< Marked as an import if any use is one.
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
