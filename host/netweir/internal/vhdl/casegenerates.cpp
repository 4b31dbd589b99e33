// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include "casegenerates.h"

#include "vhdlname.h"
#include "vhdlscan.h"
#include "vhdltokens.h"

#include <QHash>
#include <QSet>
#include <QVector>

#include <algorithm>
#include <cstring>

namespace NETWEIR::Internal {

namespace {

/// A longer result, in relation to the text, comes only from a huge selector with many choices.
constexpr qint64 MostGrowth = 16;

/// Text in place of a range.
struct Edit
{
    TextRange range;
    QByteArray text;
};

/// The tokens of a part of @p text.
QVector<VhdlToken> tokensOf(const QByteArray &text, const TextRange &range)
{
    QVector<VhdlToken> result;
    VhdlTokens tokens(text, range);
    for (VhdlToken token = tokens.next(); token.kind != VhdlToken::EndOfText; token = tokens.next())
        result.append(token);
    return result;
}

/// Names of types and subtypes, which are ranges when they are choices.
QSet<QByteArray> typeNames(const VhdlFile &file)
{
    QSet<QByteArray> names{"boolean", "natural", "positive"};
    for (const VhdlUnit &unit : file.units) {
        for (const VhdlDeclaration &declaration : unit.declarations) {
            if (declaration.kind == VhdlDeclaration::Type ||
                declaration.kind == VhdlDeclaration::Subtype)
                names.insert(foldedVhdlName(declaration.name));
        }
    }
    return names;
}

/// Turns the case generates of a text into if generates.
class CaseRewriting
{
public:
    explicit CaseRewriting(const QByteArray &text)
        : m_text(text)
        , m_file(scanVhdl(text))
        , m_types(typeNames(m_file))
    {
    }

    QByteArray run();

private:
    void rewrite(const VhdlScope &alternative, bool isFirst);
    QByteArray selectorOf(const VhdlScope &alternative);
    void rewriteOpening(const VhdlScope &alternative);
    void rewriteChoices(const QVector<VhdlToken> &tokens);
    void rewriteChoice(const VhdlToken *begin, const VhdlToken *end);
    void rewriteRange(const VhdlToken *begin, const VhdlToken *to, const VhdlToken *end);
    void rewriteNamedRange(const VhdlToken *begin, const VhdlToken *end);
    void insert(int offset, const QByteArray &text) { replace({offset, offset}, text); }
    void replace(const VhdlToken &token, const QByteArray &text)
    {
        replace(TextRange{token.offset, token.end()}, text);
    }
    void replace(const TextRange &range, const QByteArray &text);
    bool isTooLong() const { return m_added > MostGrowth * m_text.size(); }
    QByteArray applied();

    const QByteArray &m_text;
    const VhdlFile m_file;
    const QSet<QByteArray> m_types;
    QHash<int, QByteArray> m_selectors; ///< By the offset of the opening.
    QByteArray m_selector; ///< Of the current alternative, in parentheses and on one line.
    QVector<Edit> m_edits;
    qint64 m_added = 0;
    bool m_isBroken = false;
};

QByteArray CaseRewriting::run()
{
    for (const VhdlUnit &unit : m_file.units) {
        QSet<int> begun;
        for (const VhdlScope &scope : unit.scopes) {
            if (scope.kind != VhdlScope::CaseGenerate || isTooLong())
                continue;
            rewrite(scope, !begun.contains(scope.opening.begin));
            begun.insert(scope.opening.begin);
        }
    }
    if (m_edits.isEmpty() || m_isBroken || isTooLong())
        return m_text;
    return applied();
}

void CaseRewriting::replace(const TextRange &range, const QByteArray &text)
{
    m_added += text.size();
    if (!isTooLong())
        m_edits.append({range, text});
}

/// "when A : 1 | 2 =>" becomes "if A : (selector) = 1 or (selector) = 2 generate".
void CaseRewriting::rewrite(const VhdlScope &alternative, bool isFirst)
{
    if (isFirst)
        rewriteOpening(alternative);
    m_selector = selectorOf(alternative);
    const QVector<VhdlToken> choices = tokensOf(m_text, alternative.head);
    const bool isOthers = choices.size() == 1 && choices.first().is(VhdlKeyword::Others);
    const int when = alternative.range.begin;
    replace({when, when + int(strlen("when"))}, isFirst ? "if" : isOthers ? "else" : "elsif");
    if (isOthers)
        replace(choices.first(), isFirst ? "true" : "");
    else
        rewriteChoices(choices);
    const VhdlToken arrow = VhdlTokens(m_text, {alternative.head.end, m_text.size()}).next();
    m_isBroken = m_isBroken || !arrow.is(VhdlToken::Arrow);
    replace(arrow, " generate ");
}

/// The selector in parentheses and on one line.
QByteArray CaseRewriting::selectorOf(const VhdlScope &alternative)
{
    QByteArray &selector = m_selectors[alternative.opening.begin];
    if (!selector.isEmpty())
        return selector;
    for (const VhdlToken &token : tokensOf(m_text, alternative.selector))
        selector += (selector.isEmpty() ? "(" : " ") + token.bytes();
    selector += ')';
    return selector;
}

/// Blanks "case selector generate".
void CaseRewriting::rewriteOpening(const VhdlScope &alternative)
{
    QByteArray blanks =
        m_text.mid(alternative.opening.begin, alternative.opening.end - alternative.opening.begin);
    blank(&blanks, {0, blanks.size()});
    replace(alternative.opening, blanks);
}

void CaseRewriting::rewriteChoices(const QVector<VhdlToken> &tokens)
{
    const VhdlToken *begin = tokens.begin();
    int depth = 0;
    for (const VhdlToken &token : tokens) {
        depth += token.is('(') ? 1 : token.is(')') ? -1 : 0;
        if (depth != 0 || !token.is('|') || isTooLong())
            continue;
        rewriteChoice(begin, &token);
        replace(token, " or ");
        begin = &token + 1;
    }
    rewriteChoice(begin, tokens.end());
}

/// A choice is a value, a range of values, or a type.
void CaseRewriting::rewriteChoice(const VhdlToken *begin, const VhdlToken *end)
{
    int depth = 0;
    for (const VhdlToken *token = begin; token != end; ++token) {
        depth += token->is('(') ? 1 : token->is(')') ? -1 : 0;
        if (depth != 0 || token == begin)
            continue;
        if (token->is(VhdlKeyword::Range) && token[-1].is('\'')) {
            rewriteNamedRange(begin, token - 1);
            replace({token[-1].offset, token->end()}, "");
            return;
        }
        if (token->is(VhdlKeyword::Range)) { // "type range 1 to 3"
            replace({begin->offset, token->end()}, "");
            begin = token + 1;
        } else if (token->is(VhdlKeyword::To) || token->is(VhdlKeyword::Downto)) {
            rewriteRange(begin, token, end);
            return;
        }
    }
    if (end - begin == 1 && m_types.contains(foldedVhdlName(begin->text)))
        rewriteNamedRange(begin, end);
    else if (begin != end)
        insert(begin->offset, m_selector + " = ");
}

void CaseRewriting::rewriteRange(const VhdlToken *begin, const VhdlToken *to, const VhdlToken *end)
{
    const bool falls = to->is(VhdlKeyword::Downto);
    insert(begin->offset, '(' + m_selector + (falls ? " <= " : " >= "));
    replace(*to, " and " + m_selector + (falls ? " >= " : " <= "));
    insert(end[-1].end(), ")");
}

/// The range of an array or the values of a type.
void CaseRewriting::rewriteNamedRange(const VhdlToken *begin, const VhdlToken *end)
{
    QByteArray name;
    for (const VhdlToken *token = begin; token != end; ++token)
        name += token->bytes();
    insert(begin->offset, '(' + m_selector + " >= ");
    insert(end[-1].end(), "'low and " + m_selector + " <= " + name + "'high)");
}

QByteArray CaseRewriting::applied()
{
    std::stable_sort(m_edits.begin(), m_edits.end(),
                     [](const Edit &a, const Edit &b) { return a.range.begin < b.range.begin; });
    QByteArray result;
    result.reserve(m_text.size() + int(m_added));
    int at = 0;
    for (const Edit &edit : m_edits) {
        result.append(m_text.constData() + at, edit.range.begin - at);
        result += edit.text;
        at = edit.range.end;
    }
    return result.append(m_text.constData() + at, m_text.size() - at);
}

} // namespace

QByteArray withoutCaseGenerates(const QByteArray &text)
{
    return CaseRewriting(text).run();
}

} // namespace NETWEIR::Internal
