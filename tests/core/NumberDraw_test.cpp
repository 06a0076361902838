// Numbers as the screens draw them: by one workstation at its edges, and by several that save at the same moment.

#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

#include "core/DocumentNumbers.h"
#include "platform/data/Statement.h"
#include "tests/desk/Desk.h"

namespace kv {
namespace {

const Date kDay(2024, 3, 15);

void storeVoucher(Desk& desk, const std::string& voucher) {
    desk.cn().Execute(
        sql("INSERT INTO AP (Voucher, VoucherDate, Period) VALUES ('{}', '2024-03-15', '202403')").text(voucher));
}

void set(Desk& desk, std::string_view key, std::string_view value) { desk.session().Parameters.take(key, value); }

TEST(VoucherNumber, CountsWithinItsPeriodWhereTheHospitalWantsIt) {
    Desk desk(freshHospital(scratchFolder()));
    Session& session = desk.session();
    EXPECT_EQ(GetNewAPNo(session, "202403"), "000001") << "the running series of the demo hospital";
    EXPECT_EQ(GetNewAPNo(session, "202403", true), "000002");
    session.Sys.sw_APVNo = "0";
    EXPECT_EQ(GetNewAPNoByDate(session, kDay), "2024030001");
    EXPECT_EQ(GetNewAPNoByDate(session, kDay), "2024030002") << "drawn and not saved yet";
    EXPECT_EQ(GetNewAPNoByDate(session, Date(2024, 4, 1)), "2024040001");
    EXPECT_EQ(GetNewAPNo(session, "202403", true), "2024030003");
    for (const char* voucher : {"2024030250", "202403-X", "CM000001"}) storeVoucher(desk, voucher);
    EXPECT_EQ(GetNewAPNoByDate(session, kDay), "2024030251") << "a voucher that came from elsewhere";
    storeVoucher(desk, "2024039999");
    EXPECT_THROW(GetNewAPNoByDate(session, kDay), Error);
    EXPECT_EQ(GetNewAPNo(session, "A"), "A0001");
    EXPECT_EQ(GetNewAPNo(session, "A"), "A0002");
    EXPECT_THROW(GetNewAPNo(session, "2024-03"), Error);
}

TEST(CreditMemoNumber, IsThatOfTheSettingsOrALaterOne) {
    Desk desk(freshHospital(scratchFolder()));
    EXPECT_EQ(GetNextCreditMemo(desk.session()), "CM000001");
    EXPECT_EQ(GetNextCreditMemo(desk.session()), "CM000002");
    desk.cn().Execute("UPDATE SYS SET CreditMemo = 40");
    EXPECT_EQ(GetNextCreditMemo(desk.session()), "CM000040");
    desk.cn().Execute("UPDATE SYS SET CreditMemo = 1234567");
    EXPECT_EQ(GetNextCreditMemo(desk.session()), "CM1234567");
}

TEST(CheckNumbers, AreAsWideAsTheirFormat) {
    Desk desk(freshHospital(scratchFolder()));
    EXPECT_EQ(GetNewCVNo(desk.session(), "0000"), "0001");
    EXPECT_EQ(GetNewCVNo(desk.session(), "000000"), "000002");
    EXPECT_EQ(GetNewDMNum(desk.session()), "DM000001");
}

/// Text, year, month and series of a printed number.
std::string parts(const PrintedNumber& number) {
    return number.Text + "|" + number.Year + "|" + number.Month + "|" + number.Series;
}

TEST(PrintedNumbers, FollowTheirMaskOrTheirPrefixAndForm) {
    Desk desk(freshHospital(scratchFolder()));
    Session& session = desk.session();
    EXPECT_EQ(parts(GetNextJvNumber(session, "12", "202403", kDay)), "12|2024|03|");
    EXPECT_EQ(parts(GetNextPrintVoucher(session, "000012", "202403", kDay)), "000012|2024|03|");
    set(desk, "VOUCHERPREFIX", "APV");
    set(desk, "VOUCHERFORMAT", "-YY-0000");
    set(desk, "CVPREFIX", "MM");
    EXPECT_EQ(parts(GetNextPrintVoucher(session, "000012", "202403", kDay)), "APV-24-0012|2024|03|");
    EXPECT_EQ(parts(GetNextPrintCVNo(session, "7", "202403", kDay)), "MM000007|2024|03|") << "no tokens in a prefix";

    for (const char* key : {"USEPRINTVOUCHER", "USEPRINTCVNO", "USEPRINTJVBATCH"}) set(desk, key, "Y");
    EXPECT_EQ(parts(GetNextJvNumber(session, "12", "202403", kDay)), "JVD03-001-24|2024|03|001");
    EXPECT_EQ(parts(GetNextPrintVoucher(session, "12", "202403", kDay)), "APD03-001-24|2024|03|001");
    EXPECT_EQ(parts(GetNextPrintCVNo(session, "12", "202403", kDay)), "D03-001-24|2024|03|001");
    EXPECT_EQ(parts(GetNextPrintCVNo(session, "12", "202404", Date(2024, 4, 1))), "D04-001-24|2024|04|001");
    desk.cn().Execute("UPDATE NumberSeries SET LastNo = 999 WHERE Series = 'AP' AND Month = '03'");
    EXPECT_EQ(parts(GetNextPrintVoucher(session, "12", "202403", kDay)), "APD03-1000-24|2024|03|1000");
    EXPECT_THROW(GetNextPrintVoucher(session, "12", "2024", kDay), Error) << "no period, no number";

    desk.cn().Execute(
        "INSERT INTO AP2 (Voucher, PrintVoucher, APYear, APMonth, APSeries) VALUES ('000012', 'APD03-001-24', '2024', "
        "'03', '001')");
    const VoucherNumbers found = GetInternalNumbersAP(session, "APD03-001-24");
    EXPECT_EQ(found.Voucher + " " + parts(found.Printed), "000012 APD03-001-24|2024|03|001");
    EXPECT_EQ(GetInternalNumbersAP(session, "O'X").Voucher, "");
}

/// Four workstations save documents at the same moment; some saves fail and roll back. Every stored number is its own.
TEST(SavesAtTheSameMoment, NeverShareANumber) {
    constexpr int kStations = 4;
    constexpr int kSaves = 40;
    const std::string file = freshHospital(scratchFolder());
    std::vector<pid_t> stations;
    for (int station = 0; station < kStations; ++station) {
        const pid_t child = fork();
        if (child == 0) {
            try {
                Desk desk(file);
                set(desk, "USEPRINTVOUCHER", "Y");
                desk.session().Sys.sw_APVNo = "0";
                for (int i = 0; i < kSaves; ++i) {
                    Transaction save(desk.cn());
                    storeVoucher(desk, GetNewAPNoByDate(desk.session(), kDay));
                    storeVoucher(desk, GetNextCreditMemo(desk.session()));
                    const PrintedNumber printed = GetNextPrintVoucher(desk.session(), "", "202403", kDay);
                    desk.cn().Execute(sql("INSERT INTO AP2 (Voucher, PrintVoucher, APSeries) VALUES ('{}', '{}', '{}')")
                                          .text(std::to_string(station) + "-" + std::to_string(i))
                                          .text(printed.Text)
                                          .text(printed.Series));
                    if (i % 4 != 3) save.commit();
                }
                ::_exit(0);
            } catch (const Error& failure) {
                std::fprintf(stderr, "%s\n", failure.description.c_str());
                ::_exit(1);
            }
        }
        stations.push_back(child);
    }
    for (const pid_t station : stations) {
        int status = 0;
        ::waitpid(station, &status, 0);
        EXPECT_TRUE(WIFEXITED(status) && WEXITSTATUS(status) == 0);
    }
    const std::string stored = std::to_string(kStations * kSaves * 3 / 4);
    Desk after(file);
    for (const char* kind : {"2024%", "CM%"}) {
        const std::string of = std::string(" FROM AP WHERE Voucher LIKE '") + kind + "'";
        EXPECT_EQ(after.ask("SELECT COUNT(*)" + of), stored);
        EXPECT_EQ(after.ask("SELECT MAX(CAST(RIGHT(Voucher, 4) AS int))" + of), stored) << "a gap";
    }
    EXPECT_EQ(after.ask("SELECT COUNT(DISTINCT PrintVoucher) FROM AP2"), stored);
}

}  // namespace
}  // namespace kv
