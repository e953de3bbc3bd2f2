// SPDX-License-Identifier: Apache-2.0
// The scanner as the workstation sees it: a list of devices, one open device with a few options
// worth setting (resolution, mode, source, page size), and the acquisition of every page the
// device gives, each handed over as soon as it is complete. Production drives SANE; the tests use
// SANE's own virtual devices through the same class, and builds without SANE get a scanner that has
// no devices.
#pragma once

#include <QByteArray>
#include <QList>
#include <QString>
#include <QStringList>

#include <functional>
#include <memory>

struct ScanDevice {
    QString name;  // what open() takes, e.g. "test:0"
    QString label; // vendor, model and kind for the operator
};

// One option of the open device as a settings dialog shows it.
struct ScanOption {
    QString name;        // device option name ("resolution", "mode", "source", "page-size")
    QString title;       // the device's own title
    QStringList choices; // a list constraint; empty for a number range
    int minimum = 0;     // a number range, when choices is empty
    int maximum = 0;
    QString value; // the current value as text
};

// A complete page as the device delivered it: rows of packed samples. depth 1 is bitonal with 1 as
// black; channels is 1 (grey) or 3 (RGB).
struct ScanPage {
    QByteArray pixels;
    int width = 0;
    int height = 0;
    int bytesPerLine = 0;
    int depth = 1;
    int channels = 1;
    int dpi = 200;
};

// How an acquisition ended. Everything but Done and Cancelled is a fault of the device or paper;
// pages delivered before it stay delivered.
enum class ScanEnd { Done, Cancelled, FeederEmpty, Jammed, CoverOpen, DeviceGone, Failed };

class Scanner {
public:
    virtual ~Scanner() = default;

    // The devices present now; empty when there are none (or SANE is not built in).
    virtual QList<ScanDevice> devices() = 0;
    // Opens device by name, closing one opened before. False, with the reason in error, when the
    // device cannot be opened.
    virtual bool open(const QString& device, QString& error) = 0;
    virtual void close() = 0;
    // The options of the open device among resolution, mode, source, depth and page size.
    virtual QList<ScanOption> options() = 0;
    // Sets an option of the open device from its text form; false with the reason when refused.
    virtual bool setOption(const QString& name, const QString& value, QString& error) = 0;
    // Scans every page the device gives (a feeder until it is empty, a flatbed one page). onPage is
    // called with each complete page; idle is called often while data arrives, so a window can
    // process its events and call cancel(). Returns how the batch ended.
    virtual ScanEnd acquire(const std::function<void(const ScanPage&)>& onPage, const std::function<void()>& idle) = 0;
    // Asks a running acquisition to stop after the data in hand; pages already delivered stay.
    virtual void cancel() = 0;
};

// The scanner of this build: SANE when built with it, else one without devices.
std::unique_ptr<Scanner> makeScanner();
