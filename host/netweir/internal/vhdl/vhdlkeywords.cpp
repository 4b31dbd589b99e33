// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include "vhdlkeywords.h"

#include <algorithm>
#include <array>
#include <unordered_map>

namespace NETWEIR::Internal {

namespace {

using KeywordTable = std::unordered_map<std::string_view, VhdlKeyword>;

/// No keyword is longer.
constexpr std::size_t LongestKeyword = 13;

const KeywordTable &keywords()
{
    static const KeywordTable table = {
        {"abs", VhdlKeyword::Operator},
        {"access", VhdlKeyword::Access},
        {"after", VhdlKeyword::After},
        {"alias", VhdlKeyword::Alias},
        {"all", VhdlKeyword::All},
        {"and", VhdlKeyword::Operator},
        {"architecture", VhdlKeyword::Architecture},
        {"array", VhdlKeyword::Array},
        {"assert", VhdlKeyword::Assert},
        {"attribute", VhdlKeyword::Attribute},
        {"begin", VhdlKeyword::Begin},
        {"block", VhdlKeyword::Block},
        {"body", VhdlKeyword::Body},
        {"buffer", VhdlKeyword::Buffer},
        {"bus", VhdlKeyword::Bus},
        {"case", VhdlKeyword::Case},
        {"component", VhdlKeyword::Component},
        {"configuration", VhdlKeyword::Configuration},
        {"constant", VhdlKeyword::Constant},
        {"disconnect", VhdlKeyword::Disconnect},
        {"downto", VhdlKeyword::Downto},
        {"else", VhdlKeyword::Else},
        {"elsif", VhdlKeyword::Elsif},
        {"end", VhdlKeyword::End},
        {"entity", VhdlKeyword::Entity},
        {"exit", VhdlKeyword::Exit},
        {"file", VhdlKeyword::File},
        {"for", VhdlKeyword::For},
        {"function", VhdlKeyword::Function},
        {"generate", VhdlKeyword::Generate},
        {"generic", VhdlKeyword::Generic},
        {"group", VhdlKeyword::Group},
        {"guarded", VhdlKeyword::Guarded},
        {"if", VhdlKeyword::If},
        {"impure", VhdlKeyword::Impure},
        {"in", VhdlKeyword::In},
        {"inertial", VhdlKeyword::Inertial},
        {"inout", VhdlKeyword::Inout},
        {"is", VhdlKeyword::Is},
        {"label", VhdlKeyword::Label},
        {"library", VhdlKeyword::Library},
        {"linkage", VhdlKeyword::Linkage},
        {"literal", VhdlKeyword::Literal},
        {"loop", VhdlKeyword::Loop},
        {"map", VhdlKeyword::Map},
        {"mod", VhdlKeyword::Operator},
        {"nand", VhdlKeyword::Operator},
        {"new", VhdlKeyword::New},
        {"next", VhdlKeyword::Next},
        {"nor", VhdlKeyword::Operator},
        {"not", VhdlKeyword::Operator},
        {"null", VhdlKeyword::Null},
        {"of", VhdlKeyword::Of},
        {"on", VhdlKeyword::On},
        {"open", VhdlKeyword::Open},
        {"or", VhdlKeyword::Operator},
        {"others", VhdlKeyword::Others},
        {"out", VhdlKeyword::Out},
        {"package", VhdlKeyword::Package},
        {"port", VhdlKeyword::Port},
        {"postponed", VhdlKeyword::Postponed},
        {"procedure", VhdlKeyword::Procedure},
        {"process", VhdlKeyword::Process},
        {"pure", VhdlKeyword::Pure},
        {"range", VhdlKeyword::Range},
        {"record", VhdlKeyword::Record},
        {"register", VhdlKeyword::Register},
        {"reject", VhdlKeyword::Reject},
        {"rem", VhdlKeyword::Operator},
        {"report", VhdlKeyword::Report},
        {"return", VhdlKeyword::Return},
        {"rol", VhdlKeyword::Operator},
        {"ror", VhdlKeyword::Operator},
        {"select", VhdlKeyword::Select},
        {"severity", VhdlKeyword::Severity},
        {"shared", VhdlKeyword::Shared},
        {"signal", VhdlKeyword::Signal},
        {"sla", VhdlKeyword::Operator},
        {"sll", VhdlKeyword::Operator},
        {"sra", VhdlKeyword::Operator},
        {"srl", VhdlKeyword::Operator},
        {"subtype", VhdlKeyword::Subtype},
        {"then", VhdlKeyword::Then},
        {"to", VhdlKeyword::To},
        {"transport", VhdlKeyword::Transport},
        {"type", VhdlKeyword::Type},
        {"unaffected", VhdlKeyword::Unaffected},
        {"units", VhdlKeyword::Units},
        {"until", VhdlKeyword::Until},
        {"use", VhdlKeyword::Use},
        {"variable", VhdlKeyword::Variable},
        {"wait", VhdlKeyword::Wait},
        {"when", VhdlKeyword::When},
        {"while", VhdlKeyword::While},
        {"with", VhdlKeyword::With},
        {"xnor", VhdlKeyword::Operator},
        {"xor", VhdlKeyword::Operator},
    };
    return table;
}

} // namespace

VhdlKeyword vhdlKeywordOf(std::string_view word)
{
    if (word.size() > LongestKeyword)
        return VhdlKeyword::None;
    std::array<char, LongestKeyword> lower{};
    std::transform(word.begin(), word.end(), lower.begin(),
                   [](char c) { return c >= 'A' && c <= 'Z' ? char(c - 'A' + 'a') : c; });
    const auto found = keywords().find({lower.data(), word.size()});
    return found == keywords().end() ? VhdlKeyword::None : found->second;
}

} // namespace NETWEIR::Internal
