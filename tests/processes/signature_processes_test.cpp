#include "platform/app/application.h"
#include "platform/app/message_runner.h"
#include "platform/app/remote_letter.h"
#include "platform/app/roster.h"
#include "platform/kernel/port_frame.h"
#include "platform/kernel/ports.h"
#include "tests/processes/peer.h"
#include "tests/support/messages.h"
#include "tests/support/own_looper.h"

namespace {

constexpr const char* kTheirs = "application/x-vnd.test-theirs";
constexpr const char* kOurs = "application/x-vnd.test-ours";

/** Records what it receives, and answers questions. */
struct Recorder : BLooper {
  Recorder() { SetAnswerCodes({'answ'}); }
  void MessageReceived(BMessage* message) override {
    if (message->what == 'beat') {
      ++fBeats; // not kept: a runner waits until its last beat is gone
      return;
    }
    const std::lock_guard lock(fMutex);
    fReceived.push_back(*message);
    if (fAnswers && message->IsSourceWaiting()) message->SendReply(fHugeAnswer ? fHugeAnswer.get() : message);
  }
  std::atomic<bool> fAnswers{true};
  std::atomic<int> fBeats{0};

  /** The answer to any question from now on. */
  void AnswerHuge(const BMessage& answer) {
    const std::lock_guard lock(fMutex);
    fHugeAnswer = std::make_unique<BMessage>(answer);
  }
  std::vector<BMessage> Received() {
    const std::lock_guard lock(fMutex);
    return fReceived;
  }

private:
  std::mutex fMutex;
  std::unique_ptr<BMessage> fHugeAnswer;
  std::vector<BMessage> fReceived;
};

BMessage text_message(uint32 what, const std::string& text) {
  return message_of(what, "text", text);
}

std::string text_of(const BMessage& message) {
  return field<std::string>(message, "text").value_or("none");
}

/** Another process with an application in it, and a looper here. */
struct SignaturesBetweenProcesses : testing::Test {
  void SetUp() override {
    ASSERT_EQ(fPeer.Ask(std::string("app ") + kTheirs + " 5"), "ok");
    fTheirs = BMessenger(kTheirs);
    fLooper->Run();
  }
  void TearDown() override { be_roster->RemoveName(kOurs); }
  /** What their application answers to a text. */
  std::string Answer(const std::string& text) const { return text_of(ask(fTheirs, text_message('ask?', text))); }
  /** They ask ours: with "ask" a text, with "send" any code. */
  std::string AskedByThem(const std::string& verb, const std::string& what) {
    return fPeer.Ask(verb + " " + kOurs + " " + what);
  }
  void Offer() { ASSERT_EQ(be_roster->AddName(kOurs, BMessenger(fLooper.get()), {'ask?'}), B_OK); }

  Peer fPeer;
  BMessenger fTheirs;
  OwnLooper<Recorder> fLooper{new Recorder};
};

} // namespace

TEST_F(SignaturesBetweenProcesses, ReachTheOwnerAndReturnItsAnswer) {
  EXPECT_TRUE(fTheirs.IsValid());
  EXPECT_EQ(fTheirs, BMessenger(kTheirs));
  EXPECT_TRUE(be_roster->IsRunning(kTheirs));
  EXPECT_FALSE(be_roster->IsRunning("application/x-vnd.test-nobody"));
  const BMessage answer = ask(fTheirs, text_message('ask?', "何時"));
  EXPECT_EQ(text_of(answer), "何時");
  EXPECT_EQ(field<bool>(answer, "remote"), true) << "they know that we are another process";
}

TEST_F(SignaturesBetweenProcesses, CarryMoreThanASocketHoldsBothWays) {
  std::string text;
  for (int i = 0; text.size() < 5000000; ++i) text += std::to_string(i);
  EXPECT_TRUE(Answer(text) == text);
}

TEST_F(SignaturesBetweenProcesses, PreferThisProcess) {
  ASSERT_EQ(be_roster->AddName(kTheirs, BMessenger(fLooper.get())), B_OK);
  EXPECT_EQ(BMessenger(kTheirs), BMessenger(fLooper.get()));
  EXPECT_EQ(be_roster->AddName(kTheirs, fTheirs), B_NAME_IN_USE);
  EXPECT_EQ(be_roster->Signatures("application/x-vnd.test-t"), std::vector<std::string>{kTheirs});
  be_roster->RemoveName(kTheirs);
  EXPECT_EQ(BMessenger(kTheirs), fTheirs) << "the other process still has it";
}

TEST_F(SignaturesBetweenProcesses, AcceptFromOutsideOnlyWhatTheyOfferAsLongAsTheyDo) {
  Offer();
  EXPECT_EQ(AskedByThem("send", "ask?"), "ask?");
  for (const char* const code : {"_QRQ", "Scmr", "mwcl", "answ"}) EXPECT_EQ(AskedByThem("send", code), "_MNU") << code;
  EXPECT_EQ(AskedByThem("ask", "hello"), "hello");
  ASSERT_EQ(fLooper->Received().size(), 2u);
  EXPECT_TRUE(fLooper->Received().front().IsSourceRemote());
  fLooper->AnswerHuge(text_message('answ', std::string(kMaxPortMessage, 'x')));
  EXPECT_EQ(AskedByThem("ask", "hello"), "nothing") << "the asker is released";
  be_roster->RemoveName(kOurs);
  EXPECT_EQ(AskedByThem("ask", "hello"), "failed");
}

TEST_F(SignaturesBetweenProcesses, AnswerALooperLater) {
  const BMessage unexpected('odd?'); // answered by a code that the looper does not expect
  EXPECT_EQ(fTheirs.SendMessage(&unexpected, BMessenger(fLooper.get())), B_OK);
  const BMessage question = text_message('twic', "echo");
  EXPECT_EQ(fTheirs.SendMessage(&question, BMessenger(fLooper.get())), B_OK);
  EXPECT_TRUE(eventually([&] { return fLooper->Received().size() == 2; })) << "as often as they like";
  for (const BMessage& answer : fLooper->Received()) {
    EXPECT_EQ(text_of(answer), "echo");
    EXPECT_TRUE(answer.IsSourceRemote());
  }
}

TEST_F(SignaturesBetweenProcesses, ReleaseTheAskerOfADroppedQuestionAndLetAnotherGiveUpAndAskAgain) {
  EXPECT_EQ(ask(fTheirs, BMessage('drop')).what, B_NO_REPLY_CODE);
  const BMessage question('keep');
  BMessage answer;
  EXPECT_EQ(fTheirs.SendMessage(&question, &answer, B_INFINITE_TIMEOUT, 1000), B_TIMED_OUT);
  EXPECT_EQ(fTheirs.SendMessage('free'), B_OK) << "an answer that is discarded";
  EXPECT_EQ(Answer("next"), "next");
}

TEST_F(SignaturesBetweenProcesses, ReleaseTheAskerWhenThePeerIsKilled) {
  const BMessage question('keep');
  BPendingReply pending;
  ASSERT_EQ(fTheirs.SendMessage(&question, &pending), B_OK);
  BMessage answer;
  EXPECT_EQ(pending.Wait(&answer, 1000), B_TIMED_OUT);
  auto waiting = std::async(std::launch::async, [&] { return pending.Wait(&answer, B_INFINITE_TIMEOUT); });
  fPeer.Kill();
  EXPECT_EQ(waiting.get(), B_OK);
  EXPECT_EQ(answer.what, B_NO_REPLY_CODE);
  EXPECT_FALSE(fTheirs.IsValid());
  EXPECT_FALSE(be_roster->IsRunning(kTheirs));
  EXPECT_EQ(fTheirs.SendMessage(&question, BMessenger()), B_BAD_PORT_ID);
  EXPECT_EQ(fTheirs.SendMessage(&question, &answer), B_BAD_PORT_ID);

  Peer successor;
  EXPECT_EQ(successor.Ask(std::string("app ") + kTheirs + " 5"), "ok");
  EXPECT_TRUE(BMessenger(kTheirs).IsValid());
  EXPECT_FALSE(fTheirs.IsValid()) << "the successor is another process";
}

TEST_F(SignaturesBetweenProcesses, ReportToTheAnswererThatItsAskerIsGone) {
  Offer();
  fLooper->fAnswers = false;
  fPeer.Send(std::string("ask ") + kOurs + " hello");
  ASSERT_TRUE(eventually([&] { return fLooper->Received().size() == 1; }));
  const BMessage question = fLooper->Received().front();
  fPeer.Kill();
  EXPECT_EQ(question.SendReply('late'), B_BAD_PORT_ID);
}

TEST_F(SignaturesBetweenProcesses, RespectTheCapacityOfTheLooper) {
  ask(fTheirs, BMessage('stop')); // answered when nothing more is taken
  const BMessage note('note');
  int taken = 0;
  while (fTheirs.SendMessage(&note, BMessenger(), 0) == B_OK && taken < 1000) ++taken;
  EXPECT_EQ(taken, 5);
  EXPECT_EQ(fTheirs.SendMessage(&note, BMessenger(), 0), B_WOULD_BLOCK);
  EXPECT_EQ(fTheirs.SendMessage(&note, BMessenger(), 10000), B_TIMED_OUT);
}

TEST_F(SignaturesBetweenProcesses, WaitForRoomInABusyLooper) {
  constexpr int kNotes = 2000;
  std::vector<std::jthread> senders;
  for (int sender = 0; sender < 4; ++sender)
    senders.emplace_back([this] {
      for (int i = 0; i < kNotes; ++i) ASSERT_EQ(fTheirs.SendMessage('note'), B_OK);
    });
  senders.clear();
  ask(fTheirs, BMessage('ask?')); // handled after all notes
  EXPECT_EQ(fTheirs.SendCoalesced('note'), B_OK);
  EXPECT_EQ(fTheirs.SendLater(BMessage('note'), 0), B_OK);
  EXPECT_TRUE(eventually([this] { return fPeer.Ask("notes") == std::to_string(4 * kNotes + 2); }));
}

TEST_F(SignaturesBetweenProcesses, TheAnswersOfALooperAndItsRunnersDoNotWaitForAStoppedProcess) {
  Offer();
  fLooper->fAnswers = false;
  ASSERT_EQ(fPeer.Ask(std::string("notify ") + kOurs), "ok");
  ASSERT_TRUE(eventually([&] { return fLooper->Received().size() == 1; }));
  const BMessage question = fLooper->Received().front();
  fPeer.Stop();
  const BMessage beat('beat');
  auto toStopped = std::make_unique<BMessageRunner>(fTheirs, &beat, 1000);
  const BMessageRunner toLooper(BMessenger(fLooper.get()), &beat, 1000);
  EXPECT_EQ(question.SendReply('answ'), B_OK) << "queued";
  EXPECT_TRUE(eventually([&] { return fLooper->fBeats > 100; }));
  toStopped.reset();
  fPeer.Continue();
}

TEST_F(SignaturesBetweenProcesses, RefuseMalformedLettersAndThoseByNumberToLoopersThatHaveNotAsked) {
  const port_id port = find_port("app:application%2Fx-vnd.test-theirs");
  ASSERT_GT(port, 0);
  for (const std::string& bytes :
       {std::string(), std::string(20, '\xff'), std::string(200, '\xff'), std::string(60, '\0')})
    EXPECT_EQ(write_port(port, 'LETR', bytes.data(), bytes.size()), B_BAD_VALUE);
  EXPECT_EQ(write_port(port, 0, "x", 1), B_BAD_VALUE);
  for (uint64 number = 1; number < 100; ++number) {
    const std::vector<char> letter = letter_bytes({number, 0, {}}, BMessage('note'));
    EXPECT_EQ(write_port(port, 'LETR', letter.data(), letter.size()), B_BAD_PORT_ID);
  }
  EXPECT_EQ(Answer("alive"), "alive");
  EXPECT_EQ(fPeer.Ask("notes"), "0");
}
