// SPDX-License-Identifier: Apache-2.0
// One process-wide seam: the implementation in use of an interface the core calls out through
// (clock, progress sink, message presenter, report printer, report question). Never empty: a
// fallback answers until the windows, the command line or a test installs another.
#pragma once

template <class Interface> class Seam {
public:
    explicit constexpr Seam(Interface& fallback) : fallback_(fallback) {}

    // The installed implementation, else the fallback.
    Interface& get() const { return installed_ ? *installed_ : fallback_; }

    // Installs an implementation (not owned); nullptr restores the fallback.
    void install(Interface* implementation) { installed_ = implementation; }

private:
    Interface& fallback_;
    Interface* installed_ = nullptr;
};
