#pragma once

/// How a log-in, a change of a password or a deed on users and roles ended.
enum class TLoginResult {
    Ok,
    WrongNameOrPassword, ///< one answer for both, so that names cannot be found out
    TooEarly,            ///< after wrong passwords: TLogin::secondsToWait tells how long
    Inactive,            ///< the right password of a user whom the administrator has shut out
    WeakPassword,        ///< a new password is too short or easily guessed (PasswordComplaint)
    NameTaken,           ///< another user has this name
    NameEmpty,
    NoSuchUser,
    NotAdministrator,  ///< who is logged in is no active administrator, or no longer one
    LastAdministrator, ///< the change would leave the suite without an active administrator
    LowMemory, ///< the machine has not the memory that looking at a password takes; it counts as no try
    NoSuchRole,
    RoleStays ///< the administrator's role cannot be deleted
};
