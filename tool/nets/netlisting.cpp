// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include "netlisting.h"

#include <model/netsignals.h>
#include <netweir/rtlnet.h>
#include <netweir/rtlnetbus.h>
#include <netweir/rtlnetlist.h>
#include <tool/jsonvalue.h>
#include <tool/printable.h>

#include <vector>

namespace Tool {

namespace {

using Write = std::function<bool(const QByteArray &)>;

/// One form of the output. Modules, which only a tree has, get their items first, then the modules
/// in them.
class Printer
{
public:
    explicit Printer(const Write &write)
        : m_write(write)
    {
    }
    Printer(const Printer &) = delete;
    Printer &operator=(const Printer &) = delete;
    virtual ~Printer() = default;

    virtual void beginModule(const QString &label) = 0;
    virtual void endModule() = 0;
    virtual void addBus(NETWEIR::RtlNetBus *bus) = 0;
    /// A single net, or with @p isBit one bit of a bus.
    virtual void addNet(NETWEIR::RtlNet *net, bool isBit) = 0;
    virtual void end() = 0;

    /// Nobody wants the rest.
    bool isStopped() const { return m_isStopped; }

protected:
    void write(const QByteArray &text) { m_isStopped = !m_write(text) || m_isStopped; }

private:
    const Write &m_write;
    bool m_isStopped = false;
};

class TextPrinter final : public Printer
{
public:
    using Printer::Printer;

    void beginModule(const QString &label) override
    {
        writeLine(label);
        ++m_depth;
    }
    void endModule() override { --m_depth; }
    void addBus(NETWEIR::RtlNetBus *bus) override
    {
        writeLine(m_depth > 0 ? bus->BusName() : bus->fullBusName());
    }
    void addNet(NETWEIR::RtlNet *net, bool) override
    {
        writeLine(m_depth > 0 ? net->name() : net->fullPathName());
    }
    void end() override {}

private:
    void writeLine(const QString &name)
    {
        write(QByteArray(2 * m_depth, ' ') + printable(name) + '\n');
    }

    int m_depth = 0; ///< 0 in a list.
};

/// An array of nets and buses, or a module with its "nets" and its "modules".
class JsonPrinter final : public Printer
{
public:
    explicit JsonPrinter(const Write &write, bool isTree)
        : Printer(write)
        , m_isTree(isTree)
    {
        if (!m_isTree)
            this->write("[");
    }

    void beginModule(const QString &label) override
    {
        if (m_isInNets) {
            write("],\"modules\":[");
            m_isFirst = true;
        }
        if (!m_isRoot)
            separate();
        m_isRoot = false;
        write("{\"module\":" + jsonLine(jsonText(label)) + ",\"nets\":[");
        m_isInNets = true;
        m_isFirst = true;
    }
    void endModule() override
    {
        write(m_isInNets ? "],\"modules\":[]}" : "]}");
        m_isInNets = false;
        m_isFirst = false;
    }
    void addBus(NETWEIR::RtlNetBus *bus) override
    {
        QByteArray entry = begunEntry(bus, bus->fullBusName(), "bus") + ",\"members\":[";
        const auto &nets = bus->nets();
        for (NETWEIR::RtlNet *net : nets)
            entry += begunEntry(net, net->fullPathName(), "bit") + "},";
        entry.chop(nets.isEmpty() ? 0 : 1);
        add(entry + "]}");
    }
    void addNet(NETWEIR::RtlNet *net, bool isBit) override
    {
        add(begunEntry(net, net->fullPathName(), isBit ? "bit" : "net") + '}');
    }
    void end() override { write(m_isTree ? "\n" : m_isFirst ? "]\n" : "\n]\n"); }

private:
    /// An object that is not closed yet. Written by hand, because objects of the library would take
    /// several times as long as the search in a large design.
    template <typename Item>
    static QByteArray begunEntry(Item *item, const QString &name, const char *kind)
    {
        const auto flag = [item](TARN::ProbeType type) {
            return TARN::isExcluded(item, type) ? "false" : "true";
        };
        return "{\"name\":" + jsonLine(jsonText(name)) + ",\"kind\":\"" + kind +
               "\",\"probeIn\":" + flag(TARN::ProbeTypeIn) +
               ",\"probeOut\":" + flag(TARN::ProbeTypeOut);
    }

    void separate()
    {
        write(m_isFirst ? "\n" : ",\n");
        m_isFirst = false;
    }
    void add(const QByteArray &entry)
    {
        separate();
        write(entry);
    }

    const bool m_isTree;
    bool m_isRoot = true;
    bool m_isFirst = true;   ///< Of its list.
    bool m_isInNets = false; ///< Not yet in the modules of the innermost module.
};

/// Passes on what is usable, see NetListing::usableFor.
class UsableItems
{
public:
    UsableItems(std::optional<TARN::ProbeType> type, Printer *printer)
        : m_type(type)
        , m_printer(printer)
    {
    }

    bool foundAny() const { return m_foundAny; }

    template <typename Item>
    bool isUsable(Item *item) const
    {
        return !m_type || !TARN::isExcluded(item, *m_type);
    }

    /// Calls @p before ahead of the first one, if there is any.
    void print(const QList<NETWEIR::RtlNetBus *> &buses, const QList<NETWEIR::RtlNet *> &nets,
               const std::function<void()> &before);

private:
    std::optional<TARN::ProbeType> m_type;
    Printer *m_printer;
    bool m_foundAny = false;
};

void UsableItems::print(const QList<NETWEIR::RtlNetBus *> &buses,
                        const QList<NETWEIR::RtlNet *> &nets, const std::function<void()> &before)
{
    bool isFirst = true;
    const auto begin = [&] {
        if (isFirst)
            before();
        isFirst = false;
        m_foundAny = true;
    };
    const auto addNet = [&](NETWEIR::RtlNet *net, bool isBit) {
        if (!isUsable(net))
            return;
        begin();
        m_printer->addNet(net, isBit);
    };
    for (NETWEIR::RtlNetBus *bus : buses) {
        if (m_printer->isStopped())
            return;
        if (isUsable(bus)) {
            begin();
            m_printer->addBus(bus);
            continue;
        }
        const auto &bits = bus->nets();
        for (NETWEIR::RtlNet *bit : bits)
            addNet(bit, true);
    }
    for (NETWEIR::RtlNet *net : nets) {
        if (m_printer->isStopped())
            return;
        addNet(net, false);
    }
}

/// Prints the tree below @p root. Modules in which nothing is usable are left out like those in
/// which nothing was found.
class TreePrinter
{
public:
    TreePrinter(UsableItems *items, Printer *printer)
        : m_items(items)
        , m_printer(printer)
    {
    }

    void print(const TARN::ModuleForWidget &root)
    {
        open(root);
        begin();
        while (!m_levels.empty() && !m_printer->isStopped()) {
            Level &level = m_levels.back();
            if (level.next < level.module->subModules.size())
                open(level.module->subModules.at(level.next++));
            else
                close();
        }
    }

private:
    struct Level
    {
        const TARN::ModuleForWidget *module;
        int next = 0; ///< Of its modules.
        bool isBegun = false;
    };

    void open(const TARN::ModuleForWidget &module)
    {
        m_levels.push_back({&module});
        m_items->print(module.buses, module.nets, [this] { begin(); });
    }

    /// Begins the innermost module, and those around it first.
    void begin()
    {
        for (Level &level : m_levels) {
            if (!level.isBegun)
                m_printer->beginModule(level.module->name);
            level.isBegun = true;
        }
    }

    void close()
    {
        if (m_levels.back().isBegun)
            m_printer->endModule();
        m_levels.pop_back();
    }

    UsableItems *m_items;
    Printer *m_printer;
    std::vector<Level> m_levels;
};

std::unique_ptr<Printer> createPrinter(const NetListing &listing, const Write &write)
{
    if (listing.asJson)
        return std::make_unique<JsonPrinter>(write, listing.asTree);
    return std::make_unique<TextPrinter>(write);
}

} // namespace

bool listNets(NETWEIR::RtlNetlist *netlist, const NetListing &listing, const Write &write)
{
    const std::unique_ptr<Printer> printer = createPrinter(listing, write);
    UsableItems items(listing.usableFor, printer.get());
    if (listing.asTree) {
        TreePrinter(&items, printer.get()).print(TARN::searchNetsHierarchy(listing.search));
    } else {
        QList<NETWEIR::RtlNet *> nets;
        QList<NETWEIR::RtlNetBus *> buses;
        TARN::searchNets(netlist, listing.search, nets, buses);
        items.print(buses, nets, [] {});
    }
    printer->end();
    return items.foundAny();
}

} // namespace Tool
