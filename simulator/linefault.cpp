// SPDX-License-Identifier: GPL-3.0-or-later
#include "simulator/linefault.h"

#include <QStringList>

#include <array>

namespace kt500sim {
namespace {

enum class Argument { Count, Milliseconds, Code, Switch };

struct Form
{
    FaultKind kind;
    const char *word;
    int argumentCount;
    std::array<Argument, 2> arguments;
    const char *usage;
};

constexpr std::array<Form, 12> forms{{
    {FaultKind::NoReply, "noreply", 1, {Argument::Count}, "noreply N          lose the next N replies"},
    {FaultKind::BadChecksum, "badcrc", 1, {Argument::Count}, "badcrc N           spoil the next N checksums"},
    {FaultKind::SplitReply,
     "split",
     2,
     {Argument::Count, Argument::Milliseconds},
     "split N MS         cut the next N replies in two, MS apart"},
    {FaultKind::Splinter,
     "splinter",
     2,
     {Argument::Count, Argument::Milliseconds},
     "splinter N MS      cut the next N replies in three, MS apart"},
    {FaultKind::LateReply,
     "late",
     2,
     {Argument::Count, Argument::Milliseconds},
     "late N MS          delay the next N replies by MS"},
    {FaultKind::StaleBytes,
     "stale",
     1,
     {Argument::Count},
     "stale N            put bytes of an older reply before the next N"},
    {FaultKind::Exception,
     "exception",
     2,
     {Argument::Code, Argument::Count},
     "exception CODE N   refuse the next N requests with that code"},
    {FaultKind::Silence, "silence", 1, {Argument::Milliseconds}, "silence MS         neither hear nor speak"},
    {FaultKind::HangUp,
     "hangup",
     1,
     {Argument::Milliseconds},
     "hangup MS          close the line for MS; 0: until clear"},
    {FaultKind::Garbage, "garbage", 1, {Argument::Switch}, "garbage on|off     send random bytes"},
    {FaultKind::UnaskedStream,
     "stream",
     1,
     {Argument::Switch},
     "stream on|off      stream to nobody, until off or a stop frame"},
    {FaultKind::Clear, "clear", 0, {}, "clear              end every fault"},
}};

const Form *formOf(const QString &word)
{
    for (const Form &form : forms) {
        if (word == QLatin1String(form.word))
            return &form;
    }
    return nullptr;
}

/// Stores one argument; false if it is out of range or of the wrong form.
bool readArgument(Argument argument, const QString &text, Fault *fault)
{
    bool ok = false;
    const int number = text.toInt(&ok);
    switch (argument) {
    case Argument::Count:
        fault->count = number;
        return ok && number >= 0;
    case Argument::Milliseconds:
        fault->milliseconds = number;
        return ok && number >= 0;
    case Argument::Code:
        fault->code = number;
        return ok && number >= 1 && number <= 255;
    case Argument::Switch:
        fault->on = text == QLatin1String("on");
        return fault->on || text == QLatin1String("off");
    }
    return false;
}

QString writeArgument(Argument argument, const Fault &fault)
{
    switch (argument) {
    case Argument::Count:
        return QString::number(fault.count);
    case Argument::Milliseconds:
        return QString::number(fault.milliseconds);
    case Argument::Code:
        return QString::number(fault.code);
    case Argument::Switch:
        return fault.on ? QStringLiteral("on") : QStringLiteral("off");
    }
    return QString();
}

Fault make(FaultKind kind, int count, int milliseconds = 0, int code = 0, bool on = false)
{
    Fault fault;
    fault.kind = kind;
    fault.count = count;
    fault.milliseconds = milliseconds;
    fault.code = code;
    fault.on = on;
    return fault;
}

} // namespace

Fault Fault::noReply(int count)
{
    return make(FaultKind::NoReply, count);
}

Fault Fault::badChecksum(int count)
{
    return make(FaultKind::BadChecksum, count);
}

Fault Fault::splitReply(int count, int gapMilliseconds)
{
    return make(FaultKind::SplitReply, count, gapMilliseconds);
}

Fault Fault::splinter(int count, int gapMilliseconds)
{
    return make(FaultKind::Splinter, count, gapMilliseconds);
}

Fault Fault::lateReply(int count, int delayMilliseconds)
{
    return make(FaultKind::LateReply, count, delayMilliseconds);
}

Fault Fault::staleBytes(int count)
{
    return make(FaultKind::StaleBytes, count);
}

Fault Fault::exception(int code, int count)
{
    return make(FaultKind::Exception, count, 0, code);
}

Fault Fault::silence(int milliseconds)
{
    return make(FaultKind::Silence, 0, milliseconds);
}

Fault Fault::hangUp(int milliseconds)
{
    return make(FaultKind::HangUp, 0, milliseconds);
}

Fault Fault::garbage(bool on)
{
    return make(FaultKind::Garbage, 0, 0, 0, on);
}

Fault Fault::unaskedStream(bool on)
{
    return make(FaultKind::UnaskedStream, 0, 0, 0, on);
}

Fault Fault::clear()
{
    return make(FaultKind::Clear, 0);
}

std::optional<Fault> Fault::fromText(const QString &text, QString *error)
{
    const QStringList words = text.simplified().split(QLatin1Char(' '));
    const Form *form = formOf(words.first());
    if (form == nullptr) {
        if (error != nullptr)
            *error = QStringLiteral("there is no fault \"%1\"").arg(words.first());
        return std::nullopt;
    }

    Fault fault;
    fault.kind = form->kind;
    bool ok = words.size() == form->argumentCount + 1;
    for (int i = 0; ok && i < form->argumentCount; ++i)
        ok = readArgument(form->arguments[static_cast<std::size_t>(i)], words.at(i + 1), &fault);
    if (!ok) {
        if (error != nullptr)
            *error = QStringLiteral("usage: %1").arg(QLatin1String(form->usage));
        return std::nullopt;
    }
    return fault;
}

QString Fault::toText() const
{
    for (const Form &form : forms) {
        if (form.kind != kind)
            continue;
        QString text = QLatin1String(form.word);
        for (int i = 0; i < form.argumentCount; ++i)
            text += QLatin1Char(' ') + writeArgument(form.arguments[static_cast<std::size_t>(i)], *this);
        return text;
    }
    return QString();
}

bool Fault::isFaultWord(const QString &word)
{
    return formOf(word) != nullptr;
}

QString Fault::usage()
{
    QString text;
    for (const Form &form : forms)
        text += QLatin1String(form.usage) + QLatin1Char('\n');
    return text;
}

} // namespace kt500sim
