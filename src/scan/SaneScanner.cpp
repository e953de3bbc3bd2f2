// SPDX-License-Identifier: Apache-2.0
// The scanner on libsane. SANE is initialised once per process, on first use, and reads its
// configuration (SANE_CONFIG_DIR) then; devices are listed afresh on every call, so a scanner
// plugged in later is found. Pages are read in blocks; between blocks the caller's idle hook runs,
// which is where a window notices Escape. Page size is not a SANE option: it is offered as a choice
// that sets the scan area's corners.
#include "Scanner.h"

#include <sane/sane.h>
#include <sane/saneopts.h>

#include <QThread>

#include <cstring>
#include <mutex>

namespace {

void initSaneOnce() {
    static std::once_flag once;
    std::call_once(once, [] {
        SANE_Int version = 0;
        sane_init(&version, nullptr);
    });
}

QString statusText(SANE_Status status) {
    return QString::fromLocal8Bit(sane_strstatus(status));
}

ScanEnd endOf(SANE_Status status) {
    switch (status) {
    case SANE_STATUS_CANCELLED:
        return ScanEnd::Cancelled;
    case SANE_STATUS_NO_DOCS:
        return ScanEnd::FeederEmpty;
    case SANE_STATUS_JAMMED:
        return ScanEnd::Jammed;
    case SANE_STATUS_COVER_OPEN:
        return ScanEnd::CoverOpen;
    case SANE_STATUS_IO_ERROR:
    case SANE_STATUS_ACCESS_DENIED:
        return ScanEnd::DeviceGone;
    default:
        return ScanEnd::Failed;
    }
}

struct PaperSize {
    const char* name;
    double widthMm;
    double heightMm;
};
constexpr PaperSize paperSizes[] = {{"A4", 210.0, 297.0}, {"A5", 148.0, 210.0}, {"Letter", 215.9, 279.4}};
const QString pageSizeName = QStringLiteral("page-size");
const QString maximumSize = QStringLiteral("Maximum");

class SaneScanner final : public Scanner {
public:
    SaneScanner() { initSaneOnce(); }
    ~SaneScanner() override { close(); }

    QList<ScanDevice> devices() override {
        QList<ScanDevice> list;
        const SANE_Device** found = nullptr;
        if (sane_get_devices(&found, SANE_FALSE) != SANE_STATUS_GOOD || !found)
            return list;
        for (int i = 0; found[i]; ++i) {
            const SANE_Device* d = found[i];
            list.append({QString::fromLocal8Bit(d->name),
                         QStringLiteral("%1 %2 (%3)")
                             .arg(QString::fromLocal8Bit(d->vendor), QString::fromLocal8Bit(d->model),
                                  QString::fromLocal8Bit(d->type))});
        }
        return list;
    }

    bool open(const QString& device, QString& error) override {
        close();
        const SANE_Status status = sane_open(device.toLocal8Bit().constData(), &handle_);
        if (status != SANE_STATUS_GOOD) {
            handle_ = nullptr;
            error = statusText(status);
            return false;
        }
        return true;
    }

    void close() override {
        if (handle_)
            sane_close(handle_);
        handle_ = nullptr;
    }

    QList<ScanOption> options() override {
        QList<ScanOption> list;
        if (!handle_)
            return list;
        for (const char* name :
             {SANE_NAME_SCAN_SOURCE, SANE_NAME_SCAN_MODE, SANE_NAME_BIT_DEPTH, SANE_NAME_SCAN_RESOLUTION}) {
            const int index = find(QString::fromLatin1(name));
            if (index < 0)
                continue;
            const SANE_Option_Descriptor* d = sane_get_option_descriptor(handle_, index);
            if (!SANE_OPTION_IS_ACTIVE(d->cap) || !SANE_OPTION_IS_SETTABLE(d->cap))
                continue;
            ScanOption option{QString::fromLatin1(name), QString::fromLocal8Bit(d->title), {}, 0, 0, value(index)};
            if (d->constraint_type == SANE_CONSTRAINT_STRING_LIST) {
                for (int i = 0; d->constraint.string_list[i]; ++i)
                    option.choices.append(QString::fromLocal8Bit(d->constraint.string_list[i]));
            } else if (d->constraint_type == SANE_CONSTRAINT_WORD_LIST) {
                for (int i = 1; i <= d->constraint.word_list[0]; ++i)
                    option.choices.append(QString::number(number(d, d->constraint.word_list[i])));
            } else if (d->constraint_type == SANE_CONSTRAINT_RANGE) {
                option.minimum = number(d, d->constraint.range->min);
                option.maximum = number(d, d->constraint.range->max);
            }
            list.append(option);
        }
        if (const int brx = find(QString::fromLatin1(SANE_NAME_SCAN_BR_X)),
            bry = find(QString::fromLatin1(SANE_NAME_SCAN_BR_Y));
            brx >= 0 && bry >= 0 && sane_get_option_descriptor(handle_, brx)->unit == SANE_UNIT_MM) {
            ScanOption size{pageSizeName, QStringLiteral("Papierformat"), {}, 0, 0, maximumSize};
            const double maxX = maximumOf(brx), maxY = maximumOf(bry);
            for (const PaperSize& p : paperSizes) {
                if (p.widthMm <= maxX + 0.5 && p.heightMm <= maxY + 0.5)
                    size.choices.append(QString::fromLatin1(p.name));
                if (qAbs(value(brx).toDouble() - p.widthMm) < 0.5 && qAbs(value(bry).toDouble() - p.heightMm) < 0.5)
                    size.value = QString::fromLatin1(p.name);
            }
            size.choices.append(maximumSize);
            list.append(size);
        }
        return list;
    }

    bool setOption(const QString& name, const QString& text, QString& error) override {
        if (name == pageSizeName)
            return setPageSize(text, error);
        const int index = find(name);
        if (index < 0) {
            error = QStringLiteral("Das Gerät kennt die Einstellung '%1' nicht.").arg(name);
            return false;
        }
        const SANE_Option_Descriptor* d = sane_get_option_descriptor(handle_, index);
        if (!SANE_OPTION_IS_ACTIVE(d->cap) || !SANE_OPTION_IS_SETTABLE(d->cap)) {
            error = QStringLiteral("Die Einstellung '%1' ist bei diesem Gerät nicht wählbar.").arg(name);
            return false;
        }
        QByteArray buffer(qMax<SANE_Int>(d->size, sizeof(SANE_Word)), '\0');
        bool ok = true;
        switch (d->type) {
        case SANE_TYPE_STRING: {
            const QByteArray bytes = text.toLocal8Bit();
            if (bytes.size() >= buffer.size()) {
                error = QStringLiteral("Der Wert '%1' ist für '%2' zu lang.").arg(text, name);
                return false;
            }
            std::memcpy(buffer.data(), bytes.constData(), bytes.size());
            break;
        }
        case SANE_TYPE_BOOL: {
            const SANE_Word flag =
                (text == QLatin1String("yes") || text == QLatin1String("1") || text == QLatin1String("true"))
                    ? SANE_TRUE
                    : SANE_FALSE;
            std::memcpy(buffer.data(), &flag, sizeof flag);
            break;
        }
        case SANE_TYPE_INT:
        case SANE_TYPE_FIXED: {
            const double n = text.toDouble(&ok);
            const SANE_Word word = d->type == SANE_TYPE_FIXED ? SANE_FIX(n) : static_cast<SANE_Word>(n);
            std::memcpy(buffer.data(), &word, sizeof word);
            break;
        }
        default:
            ok = false;
        }
        if (!ok) {
            error = QStringLiteral("Der Wert '%1' passt nicht zu '%2'.").arg(text, name);
            return false;
        }
        const SANE_Status status = sane_control_option(handle_, index, SANE_ACTION_SET_VALUE, buffer.data(), nullptr);
        if (status != SANE_STATUS_GOOD) {
            error = QStringLiteral("'%1' = '%2': %3").arg(name, text, statusText(status));
            return false;
        }
        return true;
    }

    ScanEnd acquire(const std::function<void(const ScanPage&)>& onPage, const std::function<void()>& idle) override {
        if (!handle_)
            return ScanEnd::DeviceGone;
        cancelled_ = false;
        // A flatbed gives one page per start; a feeder gives pages until it reports it is empty.
        const QString source = value(find(QString::fromLatin1(SANE_NAME_SCAN_SOURCE)));
        const bool feeder = source.contains(QLatin1String("Feeder"), Qt::CaseInsensitive) ||
                            source.contains(QLatin1String("ADF"), Qt::CaseInsensitive);
        int pages = 0;
        ScanEnd end = ScanEnd::Done;
        for (;;) {
            SANE_Status status = sane_start(handle_);
            if (status == SANE_STATUS_NO_DOCS && pages > 0)
                break;
            if (status != SANE_STATUS_GOOD) {
                end = endOf(status);
                break;
            }
            ScanPage page;
            status = readPage(page, idle);
            if (status != SANE_STATUS_EOF) {
                end = cancelled_ ? ScanEnd::Cancelled : endOf(status);
                break;
            }
            ++pages;
            onPage(page);
            if (cancelled_) {
                end = ScanEnd::Cancelled;
                break;
            }
            if (!feeder)
                break;
        }
        // Backends that read through a helper thread cancel it asynchronously. A thread caught in
        // its first steps (allocating its buffer) dies holding the allocator's lock and the program
        // hangs; a thread waiting on its full pipe dies cleanly. After a fault the helper may have
        // just been started, so it gets a moment to reach that wait.
        if (end != ScanEnd::Done)
            QThread::msleep(50);
        sane_cancel(handle_);
        return end;
    }

    void cancel() override { cancelled_ = true; }

private:
    int find(const QString& name) const {
        SANE_Int count = 0;
        if (!handle_ || sane_control_option(handle_, 0, SANE_ACTION_GET_VALUE, &count, nullptr) != SANE_STATUS_GOOD)
            return -1;
        const QByteArray wanted = name.toLatin1();
        for (int i = 1; i < count; ++i) {
            const SANE_Option_Descriptor* d = sane_get_option_descriptor(handle_, i);
            if (d && d->name && wanted == d->name)
                return i;
        }
        return -1;
    }

    static int number(const SANE_Option_Descriptor* d, SANE_Word word) {
        return d->type == SANE_TYPE_FIXED ? qRound(SANE_UNFIX(word)) : word;
    }

    double maximumOf(int index) const {
        const SANE_Option_Descriptor* d = sane_get_option_descriptor(handle_, index);
        return d->constraint_type == SANE_CONSTRAINT_RANGE ? SANE_UNFIX(d->constraint.range->max) : 0.0;
    }

    // The current value of option index as text; empty when it cannot be read.
    QString value(int index) const {
        if (index < 0)
            return {};
        const SANE_Option_Descriptor* d = sane_get_option_descriptor(handle_, index);
        if (!SANE_OPTION_IS_ACTIVE(d->cap) || d->size <= 0)
            return {};
        QByteArray buffer(d->size + 1, '\0');
        if (sane_control_option(handle_, index, SANE_ACTION_GET_VALUE, buffer.data(), nullptr) != SANE_STATUS_GOOD)
            return {};
        SANE_Word word = 0;
        std::memcpy(&word, buffer.constData(), sizeof word);
        switch (d->type) {
        case SANE_TYPE_STRING:
            return QString::fromLocal8Bit(buffer.constData());
        case SANE_TYPE_BOOL:
            return word ? QStringLiteral("yes") : QStringLiteral("no");
        case SANE_TYPE_INT:
            return QString::number(word);
        case SANE_TYPE_FIXED:
            return QString::number(SANE_UNFIX(word), 'f', 1);
        default:
            return {};
        }
    }

    bool setPageSize(const QString& text, QString& error) {
        const int brx = find(QString::fromLatin1(SANE_NAME_SCAN_BR_X));
        const int bry = find(QString::fromLatin1(SANE_NAME_SCAN_BR_Y));
        if (brx < 0 || bry < 0) {
            error = QStringLiteral("Das Gerät kennt kein Papierformat.");
            return false;
        }
        double width = maximumOf(brx), height = maximumOf(bry);
        for (const PaperSize& p : paperSizes)
            if (text == QLatin1String(p.name))
                width = p.widthMm, height = p.heightMm;
        if (text != maximumSize && width == maximumOf(brx) && height == maximumOf(bry)) {
            error = QStringLiteral("Unbekanntes Papierformat '%1'.").arg(text);
            return false;
        }
        for (const char* corner : {SANE_NAME_SCAN_TL_X, SANE_NAME_SCAN_TL_Y})
            if (find(QString::fromLatin1(corner)) >= 0 &&
                !setOption(QString::fromLatin1(corner), QStringLiteral("0"), error))
                return false;
        return setOption(QString::fromLatin1(SANE_NAME_SCAN_BR_X), QString::number(width), error) &&
               setOption(QString::fromLatin1(SANE_NAME_SCAN_BR_Y), QString::number(height), error);
    }

    // Reads one frame into page; returns SANE_STATUS_EOF when the page is complete.
    SANE_Status readPage(ScanPage& page, const std::function<void()>& idle) {
        SANE_Parameters p{};
        SANE_Status status = sane_get_parameters(handle_, &p);
        if (status != SANE_STATUS_GOOD)
            return status;
        // Three-pass scanners send one colour per frame; no device of this workstation does.
        if ((p.format != SANE_FRAME_GRAY && p.format != SANE_FRAME_RGB) || !p.last_frame)
            return SANE_STATUS_UNSUPPORTED;
        page.width = p.pixels_per_line;
        page.bytesPerLine = p.bytes_per_line;
        page.depth = p.depth;
        page.channels = p.format == SANE_FRAME_RGB ? 3 : 1;
        const int dpi = qRound(value(find(QString::fromLatin1(SANE_NAME_SCAN_RESOLUTION))).toDouble());
        page.dpi = dpi > 0 ? dpi : 200;
        if (p.lines > 0)
            page.pixels.reserve(qsizetype(p.lines) * p.bytes_per_line);
        QByteArray block(64 * 1024, Qt::Uninitialized);
        for (;;) {
            SANE_Int length = 0;
            status = sane_read(handle_, reinterpret_cast<SANE_Byte*>(block.data()), SANE_Int(block.size()), &length);
            if (status != SANE_STATUS_GOOD)
                break;
            page.pixels.append(block.constData(), length);
            if (idle)
                idle();
            if (cancelled_) {
                sane_cancel(handle_);
                return SANE_STATUS_CANCELLED;
            }
        }
        if (status == SANE_STATUS_EOF) {
            // A device that does not know the height beforehand (lines -1) gives it by the data.
            page.height = page.bytesPerLine > 0 ? int(page.pixels.size() / page.bytesPerLine) : 0;
            if (page.height == 0)
                return SANE_STATUS_IO_ERROR;
        }
        return status;
    }

    SANE_Handle handle_ = nullptr;
    bool cancelled_ = false;
};

} // namespace

std::unique_ptr<Scanner> makeScanner() {
    return std::make_unique<SaneScanner>();
}
