// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include "openedview.h"

#include <model/tarnconfig.h>
#include <support/benchmark.h>
#include <view/tarnview.h>

#include <QApplication>
#include <QTemporaryDir>
#include <QTimer>

using TARN::SignalItem;
using TARN::TarnCore;
using TARN::TarnView;

namespace TarnBench {

QList<SignalItem> nets(const QString &prefix, int first)
{
    QList<SignalItem> items;
    for (int i = 0; i < SignalCount; ++i) {
        SignalItem item;
        item.name =
            QStringLiteral("soc_top/u_cluster/u_core/u_lsu/%1_%2").arg(prefix).arg(first + i);
        item.kind = SignalItem::Net;
        items.append(item);
    }
    return items;
}

TarnCore *fullCore(int index, const QString &prefix)
{
    auto *core = new TarnCore(index);
    for (int i = 0; i < PortCount; ++i) {
        core->addProbeIn(i);
        core->addProbeOut(i);
        core->probeIns.last()->signals = nets(prefix, i * SignalCount);
        core->probeOuts.last()->signals = nets(prefix + "_out", i * SignalCount);
        core->probeOuts.last()->initialValue =
            QStringLiteral("0x") +
            QString(SignalCount / 4, prefix.size() % 2 ? QLatin1Char('A') : QLatin1Char('5'));
    }
    return core;
}

void settle()
{
    QApplication::processEvents();
    QApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    QApplication::processEvents();
}

std::unique_ptr<TarnView> openedView(const QList<TarnCore *> &cores, const QString &givenPath)
{
    const QTemporaryDir folder;
    const QString path =
        givenPath.isEmpty() ? folder.filePath(QStringLiteral("full.tarn")) : givenPath;
    if (!TARN::writeTARNConfigToXml(cores, path))
        fail("the file was not written");
    auto view = std::make_unique<TarnView>();
    view->resize(900, 600);
    view->show();
    QTimer::singleShot(0, view.get(), [] {
        if (QWidget *box = QApplication::activeModalWidget())
            box->close();
    });
    view->open(path, QString(), nullptr);
    settle();
    return view;
}

} // namespace TarnBench
