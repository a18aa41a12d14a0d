// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

// One thing an encoder's limits changed in a written file, with the values
// before and after: a rate it cannot take, more channels than it takes.
struct OutputChange
{
    enum class Kind
    {
        SampleRate,
        Channels,
    };

    Kind kind = Kind::SampleRate;
    int from = 0;
    int to = 0;

    friend bool operator==(const OutputChange &, const OutputChange &) = default;
};
