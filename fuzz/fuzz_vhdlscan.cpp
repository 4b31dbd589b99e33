// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include <netweir/internal/vhdl/casegenerates.h>
#include <netweir/internal/vhdl/vhdlfacts.h>
#include <netweir/internal/vhdl/vhdlhiddencode.h>
#include <netweir/internal/vhdl/vhdlscan.h>

#include <cstdint>
#include <cstdlib>

using namespace NETWEIR::Internal;

namespace {

void expect(bool condition)
{
    if (!condition)
        std::abort();
}

/// @p range lies in @p outer.
void expectWithin(const TextRange &range, const TextRange &outer)
{
    expect(outer.begin <= range.begin && range.begin <= range.end && range.end <= outer.end);
}

void checkUnit(const VhdlUnit &unit)
{
    for (int i = 0; i < unit.scopes.size(); ++i) {
        const VhdlScope &scope = unit.scopes.at(i);
        expect(scope.parent < i && (scope.parent >= 0) == (i > 0));
        expectWithin(scope.range, i > 0 ? unit.scopes.at(scope.parent).range : unit.range);
    }
    for (const VhdlInstance &instance : unit.instances) {
        expect(!instance.unit.isEmpty() && !instance.label.isEmpty());
        expectWithin(instance.range, unit.range);
        for (const VhdlAssociation &association : instance.ports)
            expectWithin(association.actual, unit.range);
    }
    for (const VhdlDeclaration &declaration : unit.declarations) {
        expect(declaration.scope < unit.scopes.size());
        expect(declaration.type.begin <= declaration.type.end);
    }
}

/// Asks for facts about everything that was found.
void checkFacts(const VhdlSource &source)
{
    const VhdlFacts facts({source});
    for (const VhdlUnit &unit : source.file.units) {
        if (unit.kind != VhdlUnit::Architecture || unit.of.isEmpty())
            continue;
        const VhdlArchitectureFacts *const found = facts.find("e", "a");
        if (!found)
            continue;
        found->spelling({"g"}, "s");
        found->fieldSpelling({}, "s", {"f"}, "g");
        found->isAssociated({}, "u", "p");
        found->libraryOf({}, "u");
        found->computedIndexDepth({"g"}, "m");
    }
}

} // namespace

/// Every text is scanned, and what is found lies in it. Changed texts keep their lines.
extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    const QByteArray text(reinterpret_cast<const char *>(data), int(size));
    const VhdlSource source{"work", text, scanVhdl(text)};
    for (const VhdlUnit &unit : source.file.units) {
        expectWithin(unit.range, {0, text.size()});
        checkUnit(unit);
    }
    checkFacts(source);

    expect(withoutCaseGenerates(text).count('\n') == text.count('\n'));
    QByteArray shown = text;
    blankHiddenVhdl(&shown);
    expect(shown.size() == text.size() && shown.count('\n') == text.count('\n'));
    return 0;
}
