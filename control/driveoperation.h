#pragma once

/// What a person asks the program to do with a drive.
enum class DriveOperation {
    None, ///< what the program asks for by itself, and the wizard
    Read,
    Write,
    WriteAndStore,
    Store,
    FactoryReset,
    ChangePassword,
    ChangeAddress,
    EnterBootloader,
    OpenFile, ///< takes a parameter file's values as changes; nothing goes on the bus
};
