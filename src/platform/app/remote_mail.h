#pragma once

#include "platform/app/letter_offer.h"
#include "platform/app/remote_letter.h"
#include "platform/kernel/port_connection.h"

#include <string>
#include <vector>

class AnswerSource;

/** Messages to and from loopers of other processes, through the port of a signature ("app:" and the signature) or of a
    process that expects answers ("re:" and its process id). Everything from outside passes `Deliver`, which accepts
   what the signature offers and answers to loopers that have asked, and refuses the rest. Any thread, except `Deliver`.
 */
class RemoteMail {
public:
  /** Lets other processes reach the owner of the signature; of several processes the first gets the name. */
  static void Publish(const std::string& signature);
  static void Withdraw(const std::string& signature);
  /** Of all processes of the user; killed processes may have left some. */
  static std::vector<std::string> Signatures();
  /** Invalid when no living process owns the signature. */
  static BMessenger Find(const std::string& signature);
  static BMessenger Find(const RemoteAddress& address);

  static bool IsThere(const BMessenger& target);
  [[nodiscard]] static status_t Send(const BMessenger& target, const BMessage& message, const BMessenger& replyTo,
                                     bigtime_t timeout);
  [[nodiscard]] static status_t Ask(const BMessenger& target, const BMessage& message, bigtime_t timeout,
                                    std::shared_ptr<AnswerSource>* answer);

  /** Sends in the background, see outbox.h. `mark` lives until the message is sent or dropped. */
  static status_t SendLater(const BMessenger& target, const BMessage& message, bigtime_t timeout,
                            std::shared_ptr<void> mark);
  /** Sends in the background, see outbox.h. */
  static status_t Reply(const RemoteAddress& address, const BMessage& message);

  /** Passes an untrusted letter to its looper: to the target of the offer, or to the asker if it is an answer. A letter
      that is refused is answered with B_MESSAGE_NOT_UNDERSTOOD, or B_PERMISSION_DENIED if the sender expects no answer.
      On the ports' thread. */
  [[nodiscard]] static status_t Deliver(const PortFrame& frame, const std::shared_ptr<PortReturn>& sender,
                                        const LetterOffer& offer);

private:
  static status_t Refuse(uint32 code, const PortFrame& frame, const std::shared_ptr<PortReturn>& sender,
                         const RemoteAddress& replyTo);
  static status_t ReturnAddress(const BMessenger& replyTo, RemoteAddress* address);
};
