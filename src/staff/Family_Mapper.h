#pragma once

#include <QString>

/// What a member is to the employee.
enum TFamilyType : int { familyChild = 1, familySpouse = 2 };

/// One member of an employee's family.
struct TFamilly_Mapper {
    int _ID = 0;
    int _StaffCode = 0;
    int _Type = familyChild;
    QString _Name;
    bool _Sex = false; ///< false man, true woman
    QString _InsuranceNumber;
    QString _BirthDate; ///< "1390/01/05"
    bool _Death = false;
    QString _DeathDate; ///< empty when alive
    QString _Comment;   ///< at most 10 characters are stored
};
