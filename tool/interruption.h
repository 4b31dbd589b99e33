// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

namespace Tool {

/// Requests from outside to end the program: Ctrl+C, SIGTERM and the end of the terminal.
///
/// They end the program as they always do, but not before running tools are stopped and temporary
/// files are removed: the program looks at isRequested() during long work, returns to main() and
/// calls endIfRequested() there.
class Interruption
{
public:
    Interruption() = delete;

    /// To be called once, at the start. A signal that the caller of the program ignores stays so.
    static void watch();

    static bool isRequested();

    /// Waits until reading @p stream does not block. False when an end is asked for, also just
    /// before.
    static bool waitToRead(int stream);
    /// The same for writing a little: of a pipe, PIPE_BUF bytes.
    static bool waitToWrite(int stream);

    /// Ends the program by the signal that was caught, if there was one.
    static void endIfRequested();

    /// Ends the program by the signal for output that nobody reads.
    static void endByClosedPipe();
};

} // namespace Tool
