#include "device/LoadPrompt.h"

#include <gtest/gtest.h>

#include "device/DeviceBench.h"
#include "device/DiscNames.h"
#include "device/frmLoadDisc.h"
#include "device/frmPickDisc.h"
#include "platform/DiscType.h"

namespace korvenal::test {

class LoadPromptTest : public testing::Test {
 protected:
  LoadPromptTest() { trays_.feeder = false; }

  void connect(const std::string& letters) {
    for (const char letter : letters) {
      bench_.doConnect(letter);
      trays_.trays[letter] = {};
      bench_.engine.drives[letter].disc = FakeDisc{};
    }
    bench_.doChoose(letters);
  }
  /// Asks for a disc; the person does this in the prompt.
  void ask(int purpose, int reason, const std::function<void(frmLoadDisc&)>& act) {
    bench_.state.WorkerMode = purpose;
    bench_.desktop.onForm = [this, &act](Form& form) {
      if (auto* list = dynamic_cast<frmPickDisc*>(&form)) return onList_(*list);
      act(dynamic_cast<frmLoadDisc&>(form));
    };
    prompt_.doAskLoadDisc(reason, request_);
    EXPECT_FALSE(bench_.state.IgnoreEvents);
  }
  const std::vector<std::string>& trayCalls() const { return bench_.engine.trayCalls; }

  std::function<void(frmPickDisc&)> onList_;  ///< what the person does in the list of discs
  DeviceBench bench_;
  MemoryTrays trays_;
  DiscRequest request_;
  LoadPrompt prompt_{bench_.state, bench_.desktop, bench_.grids, bench_.engine,
                     trays_,       bench_.drives,  bench_.device};
};

TEST_F(LoadPromptTest, SentencesTellWhatToLoad) {
  connect("DE");
  struct Case {
    int purpose;
    int reason;
    int total;
    std::string sentence;
  };
  const Case cases[] = {
      {WorkerBurn, 0, 1,
       "Please load backup disc (DVD 4.7GB) into drive, then press [OK] button to burn backup data "
       "to disc."},
      {WorkerBurn, 2, 3,
       "Please unload and mark backup disc, reload empty backup disc (DVD 4.7GB) into drive, then "
       "press [OK] button to burn backup data to disc."},
      {WorkerRestore, 0, 0,
       "Please load the backup disc (Backup #01, Backup #02) into drive, then press [OK] button to "
       "restore backup data from disc."},
      {WorkerErase, 0, 0,
       "Please load rewritable disc into drive, then press [OK] button to start erasing."},
      {WorkerErase, 1, 0,
       "Please unload disc and reload rewritable disc into drive, then press [OK] button to "
       "continue erasing."},
      {WorkerReadIndex, 0, 0,
       "Please load the first backup disc (Backup #1) into drive, then press [OK] button to read "
       "backup index."},
  };
  request_.comboDiscType = 1;
  request_.RestoreDiscList = {1, 2, 100};
  for (const Case& one : cases) {
    request_.TotalDiscs = one.total;
    ask(one.purpose, one.reason, [&](frmLoadDisc& form) {
      EXPECT_EQ(form.DESC[0], one.sentence);
      EXPECT_EQ(form.BackupDiscShown, one.purpose == WorkerBurn);
      EXPECT_EQ(form.ckSkipBlankShown, one.purpose == WorkerErase);
      form.pbOK();
    });
  }
  request_.RestoreDiscIndex = 2;
  ask(WorkerRestore, 1, [&](frmLoadDisc& form) {
    EXPECT_NE(form.DESC[0].find("(Backup #100)"), std::string::npos);
    form.pbOK();
  });
  EXPECT_EQ(bench_.grids.vsEvent[0].Rows(), 7) << "all prompts but that for an index are told";
}

TEST_F(LoadPromptTest, BurnRangeFollowsThePlanAndTheDrives) {
  connect("DE");
  request_ = {.TotalDiscs = 3,
              .DiscsBurned = 1,
              .FailedDrives = {},
              .SizeHint = "smaller",
              .RestoreDiscList = {},
              .setName = {}};
  ask(WorkerBurn, 2, [&](frmLoadDisc& form) {
    EXPECT_EQ(form.FromDisc, 2);
    EXPECT_EQ(form.ToDisc, 3);
    EXPECT_TRUE(form.ToDiscShown);
    EXPECT_EQ(form.DiscInfo, "smaller");
    form.doChooseFromDisc(3);
    EXPECT_EQ(form.ToDisc, 3);
    form.ToDisc = 1;
    form.pbOK();
  });
  EXPECT_EQ(request_.BurnFromDisc, 1) << "exchanged";
  EXPECT_EQ(request_.BurnToDisc, 3);
  EXPECT_THAT(trayCalls(), testing::ElementsAre("eject D", "eject E", "load D", "load E"));

  request_.DiscsBurned = 3;
  ask(WorkerBurn, 2, [&](frmLoadDisc& form) {
    EXPECT_EQ(form.FromDisc, 3) << "never beyond the plan";
    form.pbOK();
  });
}

TEST_F(LoadPromptTest, TraysOpenOnlyAsFarAsNeeded) {
  connect("DE");
  request_.RestoreDiscList = {1};
  ask(WorkerRestore, 0, [](frmLoadDisc& form) { form.pbOK(); });
  EXPECT_THAT(trayCalls(), testing::IsEmpty()) << "disc 1 alone is in the drive most likely";
  request_.RestoreDiscList = {4};
  ask(WorkerRestore, 0, [](frmLoadDisc& form) {
    form.pbEject();
    form.multiClose(1);
    form.pbOK();
  });
  EXPECT_THAT(trayCalls(),
              testing::ElementsAre("eject D", "eject D", "eject E", "load E", "load D"));
}

TEST_F(LoadPromptTest, FirstPromptMayLeaveTheTrayAlone) {
  connect("D");
  request_.TotalDiscs = 2;
  request_.FirstPrompt = true;
  ask(WorkerBurn, 0, [](frmLoadDisc& form) {
    EXPECT_FALSE(form.ToDiscShown);
    EXPECT_EQ(form.DESC[1], "Burn backup disc #");
    form.pbOK();
  });
  EXPECT_THAT(trayCalls(), testing::IsEmpty());
  request_.FirstPrompt = false;
  ask(WorkerBurn, 2, [](frmLoadDisc& form) { form.pbOK(); });
  EXPECT_THAT(trayCalls(), testing::ElementsAre("eject D", "load D"));
  bench_.device.DeviceMode = 2;
  bench_.device.AutoloaderDrive = "D";
  bench_.device.doBuildDriveLetters();
  ask(WorkerBurn, 2, [](frmLoadDisc& form) {
    EXPECT_EQ(form.vsDrive.text(1, 0), "D:");
    EXPECT_EQ(form.vsDrive.text(1, 1), "MAKER WRITER D");
    form.pbOK();
  });
  EXPECT_EQ(trayCalls().size(), 2U) << "an autoloader serves itself";
}

TEST_F(LoadPromptTest, StaysOpenUntilADiscIsInOrThePersonGivesUp) {
  connect("D");
  bench_.engine.drives['D'].disc.reset();
  bench_.desktop.answers = {Answer::Ok};
  ask(WorkerRestore, 0, [&](frmLoadDisc& form) {
    form.pbOK();
    EXPECT_FALSE(form.isClosed());
    EXPECT_EQ(bench_.desktop.asked.back().title, "Disc not Found");
    EXPECT_TRUE(form.commandsEnabled);
    form.pbStop();
  });
  EXPECT_TRUE(bench_.state.StopAction);
}

TEST_F(LoadPromptTest, AStopAtAnyYieldEndsThePromptWithoutAMessage) {
  connect("DE");
  for (auto& [letter, drive] : bench_.engine.drives) drive.disc.reset();
  for (int n = 1; n < 200; ++n) {
    bench_.state.StopAction = false;
    frmLoadDisc* shown = nullptr;
    int sinceOk = 0;
    bench_.desktop.onYield = [&](int) {
      if (shown && ++sinceOk == n) shown->doCloseBox();
    };
    bool reached = true;
    ask(WorkerRestore, 1, [&](frmLoadDisc& form) {
      shown = &form;
      bench_.desktop.answers = {Answer::Ok};
      form.pbOK();
      shown = nullptr;
      if (n == 1) {
        EXPECT_THAT(trayCalls(), testing::IsEmpty()) << "no tray is closed any more";
      }
      reached = form.isClosed();
      if (!reached) form.pbStop();
    });
    EXPECT_TRUE(bench_.state.StopAction);
    if (!reached) break;
    // The last yields come after the message: there the stop is all the same noted.
    EXPECT_FALSE(bench_.state.IgnoreEvents);
    EXPECT_LE(sinceOk - n, 5);
    ASSERT_LT(n, 199);
  }
  bench_.desktop.onYield = nullptr;
}

TEST_F(LoadPromptTest, WithoutADriveOnlyStopAndTheSettingsAreLeft) {
  bench_.doChoose("D");
  ask(WorkerBurn, 0, [&](frmLoadDisc& form) {
    EXPECT_FALSE(form.commandsEnabled);
    form.pbOK();
    EXPECT_FALSE(form.isClosed());
    prompt_.doDevice = nullptr;
    form.pbStop();
  });
  bench_.state.StopAction = false;
  bench_.state.ActionBusy = true;
  prompt_.doDevice = [this] {
    const FlagScope busy(bench_.state.ActionBusy);
    const FlagScope modal(bench_.state.IgnoreEvents);
    connect("E");
  };
  ask(WorkerBurn, 0, [&](frmLoadDisc& form) {
    form.pbSetDevice();
    EXPECT_TRUE(bench_.state.IgnoreEvents && bench_.state.ActionBusy) << "the prompt goes on";
    EXPECT_EQ(form.vsDrive.text(1, 0), "E:");
    form.pbOK();
  });
  EXPECT_FALSE(bench_.state.StopAction);
}

TEST_F(LoadPromptTest, NewBlankDiscsAreOfTheJobsTypeAndNamedAfterTheirUse) {
  connect("DE");
  request_.TotalDiscs = 5;
  request_.DiscsBurned = 2;
  request_.comboDiscType = 2;
  request_.setName = "Photos (A)";
  ask(WorkerBurn, 2, [&](frmLoadDisc& form) {
    EXPECT_EQ(form.blankType(), 12);
    for (const int row : {0, 1}) EXPECT_TRUE(form.doInsertBlank(row, form.blankType()));
    form.pbStop();
  });
  EXPECT_EQ(trays_.nameIn('D'), "Photos (A) disc 03");
  EXPECT_EQ(trays_.nameIn('E'), "Photos (A) disc 04");
  ask(WorkerErase, 0, [&](frmLoadDisc& form) {
    EXPECT_EQ(form.blankType(), 0) << "nothing is to be erased on a blank disc";
    EXPECT_TRUE(form.doInsertBlank(0, 9));
    form.pbStop();
  });
  EXPECT_EQ(trays_.nameIn('D'), "DVD-RW");
}

TEST_F(LoadPromptTest, ADiscThatCannotGoInLeavesTheTrayAsItWasAndSaysWhy) {
  connect("D");
  trays_.feeder = true;
  trays_.trays['D'] = MemoryTrays::written("Mine", "Backup #2", 1);
  trays_.onShelf = {MemoryTrays::written("Photos (A) disc 01", "Backup #1", 2)};
  request_.RestoreDiscList = {1};
  bench_.desktop.answers.assign(4, Answer::Ok);
  ask(WorkerReadIndex, 0, [&](frmLoadDisc& form) {
    ASSERT_EQ(trays_.nameIn('D'), "Photos (A) disc 01") << "the feeder";
    for (const auto fault : {TrayResult::NotMade, TrayResult::DriveBusy}) {
      trays_.fault = fault;
      EXPECT_FALSE(form.doInsertBlank(0, DiscCdR));
      EXPECT_FALSE(form.doInsertFromShelf(0, "/shelf/Mine.iso"));
      EXPECT_EQ(trays_.nameIn('D'), "Photos (A) disc 01");
    }
    trays_.fault = TrayResult::None;
    form.pbStop();
  });
  ASSERT_EQ(bench_.desktop.asked.size(), 4U);
  EXPECT_EQ(bench_.desktop.asked[0].text,
            "The disc cannot be made. The folder /shelf/ is full or may not be written to.");
  EXPECT_EQ(bench_.desktop.asked[2].text,
            "The drive is at work. The disc in it can be changed when it has finished.");
}

TEST_F(LoadPromptTest, TheDiscAskedForStandsFirstAmongAHundred) {
  connect("D");
  for (int number = 1; number <= 100; ++number)
    for (const char* set : {"Photos (A)", "Films (B)"}) {
      const std::string name = DiscNames::ofSet(set, number);
      const UnixTime day = 1'700'000'000 + number * 86'400;
      trays_.onShelf.push_back(MemoryTrays::written(name, DiscNames::labelOf(number), day));
    }
  request_.RestoreDiscList = {7, 8};
  request_.setName = "Photos (A)";
  onList_ = [](frmPickDisc& list) {
    EXPECT_EQ(list.wanted, "Backup #7 of Photos (A)");
    EXPECT_EQ(list.vsDisc.Rows(), 201);
    EXPECT_EQ(list.vsDisc.text(1, PickDiscName), "Photos (A) disc 07");
    EXPECT_EQ(list.vsDisc.text(2, PickDiscName), "Films (B) disc 07") << "by its label";
    EXPECT_EQ(list.vsDisc.text(3, PickDiscName), "Films (B) disc 100") << "then the newest";
    EXPECT_EQ(list.vsDisc.Row, 1);
    list.doFilter("no such");
    EXPECT_FALSE(list.pbOKEnabled());
    list.pbOK();
    EXPECT_FALSE(list.isClosed());
    list.doFilter("PHOTOS #42");
    ASSERT_EQ(list.vsDisc.Rows(), 2);
    list.pbOK();
  };
  ask(WorkerRestore, 0, [&](frmLoadDisc& form) {
    EXPECT_TRUE(form.doInsertOther(0));
    onList_ = [](frmPickDisc& list) { list.pbCancel(); };
    EXPECT_FALSE(form.doInsertOther(0));
    form.pbStop();
  });
  EXPECT_EQ(trays_.nameIn('D'), "Photos (A) disc 42");
}

TEST_F(LoadPromptTest, DrivesForCdRwAloneRefuseOtherDiscsToErase) {
  connect("DE");
  bench_.engine.capabilities = {{'D', {}}};
  bench_.engine.drives['D'].disc->type = 5;
  bench_.desktop.answers = {Answer::Ok};
  ask(WorkerErase, 0, [](frmLoadDisc& form) {
    form.ckSkipBlank = true;
    form.pbOK();
  });
  EXPECT_EQ(bench_.desktop.asked.back().text,
            "Drive (D:) can only support the erasing of CD-RW disc.");
  EXPECT_TRUE(request_.SkipBlankDiscs);
  bench_.engine.drives['D'].disc = FakeDisc{.type = 15};
  ask(WorkerErase, 1, [](frmLoadDisc& form) { form.pbOK(); });
  EXPECT_EQ(bench_.desktop.asked.size(), 1U);
}

}  // namespace korvenal::test
