#pragma once

/// Every statement of the data modules and of the screens that have their own, with "?" where a value stands.
struct TGivenStatement {
    const char *text;
    int statements = 1; ///< how many the text holds
};

inline const TGivenStatement givenStatements[] = {
    {"select *,\n"
     "case Type\n"
     "when 0 then (select Title from Fiscal where Code=p.Usercode)\n"
     "when 1 then (select Title from Deduction where Code=p.Usercode)\n"
     "end as UserTitle\n"
     "from PayrollInfoDetail as p"},
    {"select *,  case Type  when 0 then (select Title from Fiscal where Code=p.Usercode)  "
     "when 1 then (select Title from Deduction where Code=p.Usercode)  end as UserTitle  from "
     "PayrollInfoDetail as p "},
    {"select value from payrollinfo order by code"},
    {"update PayrollInfo set Value=? where code=6 update PayrollInfo set Value=? where code=7 "
     "update PayrollInfo set Value=? where code=8 update PayrollInfo set Value=? where code=9 "
     "update PayrollInfo set Value=? where code=10 update PayrollInfo set Value=? where "
     "code=11 update PayrollInfo set Value=? where code=12 update PayrollInfo set Value=? "
     "where code=13 update PayrollInfo set Value=? where code=14 update PayrollInfo set "
     "Value=? where code=15 update PayrollInfo set Value=? where code=16 update PayrollInfo "
     "set Value=? where code=17 update PayrollInfo set Value=? where code=18 update "
     "PayrollInfo set Value=? where code=19 update PayrollInfo set Value=? where code=20 "
     "update PayrollInfo set Value=? where code=21 update PayrollInfo set Value=? where "
     "code=22 update PayrollInfo set Value=? where code=23 update PayrollInfo set Value=? "
     "where code=24 update PayrollInfo set Value=? where code=25 update PayrollInfo set "
     "Value=? where code=26 update PayrollInfo set Value=? where code=27 update PayrollInfo "
     "set Value=? where code=28 update PayrollInfo set Value=? where code=29 update "
     "PayrollInfo set Value=? where code=30",
     25},
    {"select * from PayrollInfoDetail where Id=?"},
    {"select *,Case DecTax when 0 then 'دارد' when 1 then 'ندارد' end as DecTaxTitle from "
     "CalcMethod_VW "},
    {"select * from CalcMethod where code=?"},
    {"select code from CalcMethod where code=?"},
    {"select isnull(max(code),0)+1 from CalcMethod"},
    {"delete from CalcMethod where Code=?"},
    {"select * from taxMain"},
    {"select * from TaxMain "},
    {"select * from TaxMain where Code=?"},
    {"Select isnull(Max(Code),0)+1 From TaxMain"},
    {"Delete TaxMain where Code in (?)"},
    {"select * from Tmptax where TaxMainCode=:TaxMainCode order by fromSalary"},
    {"INSERT INTO TmpTax(TaxMainCode,FromSalary,Tosalary,Comment,[Percent])   SELECT "
     "TaxMainCode,FromSalary,Tosalary,Comment,[Percent] FROM Tax where TaxMainCode=?"},
    {"select * from Tmptax where TaxMainCode = ? order by fromSalary"},
    {"select * from TmpTax where ID=?"},
    {"select ID from Tmptax where TaxMainCode=? and ID<>? and fromsalary<=? and tosalary>=?"},
    {"Delete tmptax where ID in (?)"},
    {"INSERT into Tax(TaxMainCode, FromSalary, Tosalary, Comment, [Percent]) SELECT "
     "TaxMainCode,FromSalary,Tosalary,Comment,[Percent] FROM TmpTax where TaxMainCode=?"},
    {"delete from Tax where TaxMainCode=?"},
    {"delete from tmpTax where TaxMainCode=?"},
    {"select *,\n"
     "case [day]\n"
     "when 0 then 'شنبه'\n"
     "when 1 then 'يکشنبه' \n"
     "when 2 then 'دوشنبه' \n"
     "when 3 then 'سه شنبه' \n"
     "when 4 then 'چهار شنبه' \n"
     "when 5 then 'پنجشنبه' \n"
     "when 6 then 'جمعه'\n"
     "end as DayOfWeek,\n"
     "case Type\n"
     "when 1 then 'روز کاري' \n"
     "when 2 then 'روز تعطيل هفته' \n"
     "when 3 then 'روز تعطيل رسمي'\n"
     "end as TypeDay \n"
     " \n"
     "from calender"},
    {"select *, case [day] when 0 then 'شنبه'  when 1 then 'يکشنبه'  when 2 then 'دوشنبه'  "
     "when 3 then 'سه شنبه'  when 4 then 'چهار شنبه'  when 5 then 'پنجشنبه'  when 6 then "
     "'جمعه'  end as DayOfWeek,  case Type  when 1 then 'روز کاري'  when 2 then 'روز تعطيل "
     "هفته'  when 3 then 'روز تعطيل رسمي'  end as TypeDay  from calender "},
    {"Select * from Calender where ID = ?"},
    {"select Date from calender where Date>=? and Date<=?"},
    {"Delete Calender where ID in (?)"},
    {"select * from staff where code=:Code"},
    {"select * from staff_VW"},
    {"select * from StaffGroup"},
    {"select * from StaffGroup\n"
     "where Code=:Code"},
    {"select * from Perinf"},
    {"select distinct Name,code from Staffgroup  order by code"},
    {"select * from staff where Code = ?"},
    {"select Code from staff where Name=? and LastName=? and Code<>?"},
    {"select CardNumber from Staff where CardNumber=?"},
    {"select InsuranceNumber from Staff where InsuranceNumber=?"},
    {"select NationalID from Staff where NationalID=?"},
    {"select PersonnelCode from Staff where PersonnelCode=?"},
    {"Select Max(Code)+1 From (Select IsNull(Max(Code),0)As Code From Staff  Union All Select "
     "IsNull(Max(CAST(Code AS BIGINT)),0)As Code From CodeLock_TBL Where Status=?)As T1"},
    {"Delete Staff where Code in (?)"},
    {"Select Case When Isnull((Select Code From (Select IsNull(Max(Code),0)+1 As Code From "
     "PerInf Where GrpCode=?)As T1 Where Code Not in(Select Code From PerInf) And Code Not "
     "In(Select Code From CodeLock_TBL Where Status=?)),0) <>0 Then (Select "
     "IsNull(Max(Code),0)+1 From PerInf Where GrpCode=?) Else(select Max(Code)+1 as NewCode "
     "From( select ISNull(Max(Code),0) as Code from PerINF union all select "
     "ISNull(Max(CAST(Code AS BIGINT)),0) as Code from CodeLock_TBl where Status = ? ) as t1 "
     ") End As NewCode"},
    {"select code from perinf where name=? and LName=?"},
    {"SELECT dbo.GetUinqueCode_FNC(?)"},
    {"Delete From CodeLock_TBL Where (Status=?) AND (Com_Index = ?)"},
    {" SELECT ISNULL(MIN(DoDate), 0) AS DoDateMin FROM Recruitment  WHERE StaffCode = ?"},
    {"SELECT     a.*, SexTitle = CASE sex WHEN 0 THEN 'مرد' WHEN 1 THEN 'زن' END, TypeTitle = "
     "CASE type WHEN 1 THEN 'فرزند' WHEN 2 THEN 'همسر ' END,Deathtitle= case Death when 0 "
     "then 'خير' when 1 then 'بلي' end\n"
     "FROM         tmpStaffFamily AS a\n"
     "where StaffCode=:StaffCode"},
    {"select * from tmpStaffFamily where ID=:ID"},
    {"INSERT INTO tmpstafffamily   SELECT * FROM stafffamily where staffcode=?"},
    {"SELECT a.*,  SexTitle = CASE sex WHEN 0 THEN 'مرد' WHEN 1 THEN 'زن' END, TypeTitle = "
     "CASE type WHEN 1 THEN 'فرزند' WHEN 2 THEN 'همسر ' END,Deathtitle= case Death when 0 "
     "then 'خير' when 1 then 'بلي' end  FROM tmpStaffFamily AS a   where StaffCode=?"},
    {"select * from tmpStaffFamily where ID=?"},
    {"select(select isnull(max(id),0)+1 from StaffFamily),(select isnull(max(id),0)+1 from "
     "TMPStaffFamily)"},
    {"Delete tmpstafffamily where ID in (?)"},
    {"INSERT INTO Stafffamily   SELECT * FROM tmpstafffamily where staffcode=?"},
    {"delete from stafffamily where StaffCode=?"},
    {"delete from tmpstafffamily where StaffCode=?"},
    {"Delete From tmpstafffamily Where StaffCode = ?"},
    {"Update tmpstafffamily Set StaffCode = ? Where (StaffCode = ?)"},
    {"Select StaffCode From tmpstafffamily Where StaffCode IN(Select Code From CodeLock_TBL "
     "Where (Status=?) AND (Com_Index = ?))"},
    {"Select StaffCode From TmpStaffFamily  Where (StaffCode = ?) AND StaffCode IN(Select "
     "Code From CodeLock_TBL  Where (Status=?) AND (Com_Index = ?))"},
    {"Delete From TmpStaffFamily Where StaffCode  IN(Select Code From CodeLock_TBL Where "
     "(Status=?) AND (Com_Index = ?))"},
    {"select id from tmpStaffFamily where id=?"},
    {"select * from Fiscal_VW"},
    {"select * from Fiscal_VW where code=?"},
    {"select * from Deduction_VW"},
    {"select * from Deduction_VW where code=?"},
    {"select * from FiscalGrp"},
    {"select * from FiscalGrp where code=?"},
    {"select Code,Name from FiscalGrp order by code"},
    {"select * from DeductionGrp"},
    {"select * from DeductionGrp where code=?"},
    {"select Code,Name from DeductionGrp order by code"},
    {"select(select isnull(max(code),0)+1 from fiscal),(select isnull(max(code),0)+1 from "
     "deduction)"},
    {"select code from (select code from deduction union all select code from fiscal)as a "
     "where a.code=?"},
    {"select code from Fiscal where Title=?"},
    {"select code from Deduction where Title=?"},
    {"delete from Deduction where code=?"},
    {"delete from fiscal where code=?"},
    {"select(select count(*) from tmpstaffFiscal where ItemCode=?),(select count(*) from "
     "tmpsalarybilldetail where itemcode=?)"},
    {"select(select count(*) from tmpstaffdeduction where ItemCode=?),(select count(*) from "
     "tmpsalarybilldetail where itemcode=?)"},
    {"select ID from tmpRecFiscal where ItemCode=? and RecruitmentCode=?"},
    {"select ID from tmpRecDeduction where ItemCode=? and Recruitmentcode=?"},
    {"insert into tmpRecFiscal(RecruitmentCode,ItemCode,Cost) values(?,?,?)"},
    {"insert into tmpRecDeduction(Recruitmentcode,ItemCode,Cost) values(?,?,?)"},
    {"select ID from tmpstaffOutPutDetail where ItemCode=? and OutputCode=?"},
    {"insert into tmpstaffOutPutDetail(OutPutCode,Amount,Type,ItemCode) values(?,0,?,?)"},
    {" SELECT  case    when cd.Insurance = 1 and (? = (select UserCode from PayrollInfoDetail "
     "where id = 16) ) then 1 else 0 end as RepeatBime, case when cd.Tax = 1 and (? = (select "
     "UserCode from PayrollInfoDetail where id = 17) ) then 1 else 0 end as RepeatMaliat FROM "
     "           CalcMethod cd  WHERE        (cd.Code = (select CalcMethodCode from "
     "Recruitment where code = ?))"},
    {"select * from (select * from staff_VW) as SearchT where (StaffGroup = ?)"},
    {"select * from (select * from staff_VW) as SearchT where (LeaveDate = '')"},
    {"select * from (select * from staff_VW) as SearchT where (LeaveDate <> '')"},
    {"select * from (select * from Fiscal_VW) as SearchT where (GrpCode = ?)"},
};
