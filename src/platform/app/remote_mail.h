#pragma once

#include "platform/app/letter_offer.h"
#include "platform/app/remote_letter.h"
#include "platform/kernel/port_connection.h"

#include <string>
#include <vector>

class AnswerSource;

/** Messages to and from loopers of other processes, through the port of a signature ("app:" and the signature) or of a
    process that waits for answers ("re:" and its number). All that comes from outside passes `Deliver`, which lets
    through what the signature offers and answers to loopers that have asked, and refuses the rest. Any thread, but for
    `Deliver`. */
class RemoteMail {
public:
  /** Lets other processes reach the bearer of the signature; of several processes the first has the name. */
  static void Publish(const std::string& signature);
  static void Withdraw(const std::string& signature);
  /** Of all processes of the user; one that was killed may have left its own. */
  static std::vector<std::string> Signatures();
  /** Invalid when no living process bears the signature. */
  static BMessenger Find(const std::string& signature);
  static BMessenger Find(const RemoteAddress& address);

  static bool IsThere(const BMessenger& target);
  static status_t Send(const BMessenger& target, const BMessage& message, const BMessenger& replyTo, bigtime_t timeout);
  static status_t Ask(const BMessenger& target, const BMessage& message, bigtime_t timeout,
                      std::shared_ptr<AnswerSource>* answer);

  /** Both never wait: sent in the background, see outbox.h. `mark` lives until it is sent or dropped. */
  static status_t SendLater(const BMessenger& target, const BMessage& message, bigtime_t timeout,
                            std::shared_ptr<void> mark);
  static status_t Reply(const RemoteAddress& address, const BMessage& message);

  /** Hands what came through a port to its looper: that of the offer, unless it is an answer to another one. What is
      not taken is answered with B_MESSAGE_NOT_UNDERSTOOD; to a sender that waits for no answer the status is
      B_PERMISSION_DENIED. On the ports' thread. */
  static status_t Deliver(const PortFrame& frame, const std::shared_ptr<PortReturn>& sender, const LetterOffer& offer);

private:
  static status_t Refuse(uint32 code, const PortFrame& frame, const std::shared_ptr<PortReturn>& sender,
                         const RemoteAddress& replyTo);
  static status_t ReturnAddress(const BMessenger& replyTo, RemoteAddress* address);
};
