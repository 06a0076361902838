#pragma once
// DemoYear: writes a year of an invented hospital into its books, month by month: charges, collections, purchases,
// payments, payroll and the month-end entries, each amount to the centavo, every month closed and prepared.

#include <functional>
#include <map>
#include <string>
#include <vector>

#include "demo/year/DemoBooks.h"

namespace kv {

struct DemoYearPlan {
    int year = 2024;
    int batches = 5000;  ///< about so many documents; the entries of each month's end are the least
    std::uint64_t seed = 1;
    int months = 12;  ///< how many are written
    int closed = 12;  ///< how many of them are posted, closed and prepared
};

struct DemoYearTally {
    int documents = 0;
    int lines = 0;
};

class DemoYear {
public:
    DemoYear(Session& session, const DemoYearPlan& plan);

    /// Writes the year. Opens it with figures of its own, or by the year-end closing of the year before where that
    /// year is prepared to its end. Each month is one transaction. `progress` hears the month that stands.
    /// Raises Error 58 when the year's books hold documents already.
    DemoYearTally write(const std::function<void(int month)>& progress = {});

private:
    /// A kind of document that clerks write all month long: its share of all of them, and of the month's revenue.
    struct Daily {
        const char* book;
        int share;
        int money_permille;
        void (DemoYear::*write)(const Date& day, Centavos amount);
    };
    /// A document that is written once a month, on a day; 0 is the last day, -1 the one before.
    struct Monthly {
        int day;
        void (DemoYear::*write)(const Date& day);
    };
    struct Event {
        int day;
        const Daily* daily;
        const Monthly* monthly;
        Centavos amount;
    };
    static const std::vector<Daily>& dailyKinds();
    static const std::vector<Monthly>& monthlyKinds();

    void open();
    void openFirst();
    void openFromBefore();
    void learnOpening();
    void writeMonth(int month);
    std::vector<Event> eventsOf(int month);
    int countOf(const Daily& kind, int month) const;
    Date workingDay(const char* book, int month, int day) const;
    void close(const std::string& period);
    Centavos revenue(int month) const;
    Centavos settle(const std::string& code, const Date& day, int halfDays);
    Centavos owing(const std::string& code) const { return -books_.balance(code); }
    std::vector<DemoLine> spread(const std::string& code, Centavos amount, const std::vector<const char*>& departments);

    // charges
    void wardCharges(const Date& day, Centavos amount);
    void surgeryCharges(const Date& day, Centavos amount);
    void emergencyCharges(const Date& day, Centavos amount);
    void outpatientCharges(const Date& day, Centavos amount);
    void diagnosticCharges(const Date& day, Centavos amount);
    void dialysisCharges(const Date& day, Centavos amount);
    void doctorsFees(const Date& day, Centavos amount);
    void discharges(const Date& day, Centavos amount);
    // collections
    void outpatientCollections(const Date& day, Centavos amount);
    void dischargedCollections(const Date& day, Centavos amount);
    void hmoCollections(const Date& day, Centavos amount);
    void philhealthCollections(const Date& day, Centavos amount);
    void companyCollections(const Date& day, Centavos amount);
    void bankDeposits(const Date& day, Centavos amount);
    void cardSettlement(const Date& day, Centavos amount);
    void rentals(const Date& day, Centavos amount);
    void cafeteria(const Date& day, Centavos amount);
    // payables and payments
    void goodsVoucher(const Date& day, Centavos amount);
    void servicesVoucher(const Date& day, Centavos amount);
    void doctorsVoucher(const Date& day, Centavos amount);
    void equipmentVoucher(const Date& day, Centavos amount);
    void payVouchers(const Date& day, Centavos amount);
    void pettyCash(const Date& day, Centavos amount);
    void payrollChecks(const Date& day);
    void contributionChecks(const Date& day);
    void taxChecks(const Date& day);
    void loanChecks(const Date& day);
    void oldPayables(const Date& day);
    // journal
    void inventoryIssues(const Date& day, Centavos amount);
    void fundTransfers(const Date& day);
    void payroll(const Date& day);
    void contributions(const Date& day);
    void depreciation(const Date& day);
    void amortization(const Date& day);
    void provisions(const Date& day);
    void bankEntries(const Date& day);
    void inputTax(const Date& day);
    void yearEndEntries(const Date& day);

    Session& session_;
    DemoYearPlan plan_;
    Dice dice_;
    DemoBooks books_;
    std::map<std::string, Date> settled_;
};

}  // namespace kv
