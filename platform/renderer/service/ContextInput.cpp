#include "Context.h"

#include <renderer/common/Protocol.h>

#include <utility>

namespace voro::renderer {

void Context::inputAttach(const pps::Message &message)
{
    const auto type = parseName<InputType>(message.text("type"));
    const Journal::Input input{Medium(message.text("url")), type.value_or(InputType::AutoList)};
    if (!type || input.medium.url().size() > MaximumUrl) {
        refuseInput({ErrorCode::InvalidParameter, "the URL is too long or the type unknown"});
    } else if (const Result problem = m_journal.checkInput(input); !problem) {
        refuseInput(problem);
    } else if (m_input) {
        closeMedium([this, input](const Result &) { attach(input); });
    } else {
        attach(input);
    }
}

void Context::attach(const Journal::Input &input)
{
    if (const std::string uri = input.medium.uri(); uri != m_deathsUri) {
        m_deathsUri = uri;
        m_deaths = 0;
    }
    if (m_deaths >= MostDeaths) {
        refuseInput({ErrorCode::ResourceCorrupted, "playing this medium crashed the renderer repeatedly"});
        return;
    }
    if (RecordingFile *file = m_journal.file(); file && !file->take()) {
        refuseInput({ErrorCode::ResourceUnavailable, "the file is being recorded into"});
        return;
    }
    m_position = {};
    m_resume.reset();
    m_isListFar = false;
    m_kinds.clear();
    open(input, [this, input](const Result &result) {
        if (result) {
            m_isOpen = true;
            m_input = input;
            const Parameters first = m_journal.firstTrack(input.type);
            m_journal.setTrack(1, first);
            m_folder.setTrackParameters(1, first);
            setState(State::Stopped);
            finish(result);
            return;
        }
        if (m_total > 0) {
            // The worker had reported it before it died.
            m_folder.clearMedium(m_position.track);
            m_total = 0;
        }
        refuseInput(result);
    });
}

/** Finishes an attach that failed. A recorder that has no input keeps no file from others. */
void Context::refuseInput(const Result &problem)
{
    if (RecordingFile *file = m_journal.file(); file && !m_input) {
        file->release();
    }
    finish(problem);
}

/** Has an engine open the input with all that the context was given: one that reaches what it needs and no more. */
void Context::open(const Journal::Input &input, Engine::Answered done)
{
    const Reach reach = neededReach(input);
    if (m_engine && m_reach != reach) {
        m_engine.reset();
    }
    if (!m_engine) {
        m_reach = reach;
        m_engine = m_engines.start(*this, m_owner, reach);
    }
    if (!m_engine) {
        done({ErrorCode::ResourceUnavailable, "the process has too many workers"});
        return;
    }
    m_opening = input;
    m_opened = std::move(done);
    m_settings = m_journal.settings();
    m_engine->setFrameQueues(m_journal.frameQueues());
    m_isSilent = false;
    requests::Open request = m_journal.openRequest(input, m_speed, m_resume.value_or(TrackPosition()));
    // The library asks of every medium first whether it is a playlist.
    request.isTrackNext = !m_input && input.type == InputType::Playlist;
    m_engine->ask(request, [this](const Result &result) {
        setSilent(m_isSilent);
        std::exchange(m_opened, nullptr)(result);
    });
}

Reach Context::neededReach(const Journal::Input &input) const
{
    Reach reach = m_journal.reachFor(input);
    reach.network |= m_isListFar;
    return reach;
}

/** Has the next engine begin with the track that is shown, where nothing better is known. */
void Context::resumeAtTrackStart()
{
    if (!m_resume && !m_hasEnded) {
        m_resume = TrackPosition{m_position.track, 0};
    }
}

/**
 * Goes on with an engine that begins where the last one was. When it does not, a context that plays has stopped; but a
 * trial that fails, and a lack of engines, leave it as it is.
 */
void Context::reopen(Purpose purpose, Engine::Answered done)
{
    if (m_state == State::Playing) {
        m_resume = TrackPosition{m_position.track, kindOf(m_position.track).isSeekable ? m_position.milliseconds : 0};
    } else {
        resumeAtTrackStart();
    }
    m_isOpen = false;
    open(*m_input, [this, purpose, done = std::move(done)](const Result &result) {
        m_isOpen = static_cast<bool>(result);
        const auto goOn = [this, done](const Result &played) {
            if (!played && m_state == State::Playing) {
                setState(State::Stopped, Folder::Ending{played.code, m_position});
            }
            done(played);
        };
        if (m_isOpen && m_state == State::Playing) {
            m_engine->ask(requests::Play{}, goOn);
        } else if (m_isOpen || purpose == Purpose::Trial || !m_engine) {
            done(result);
        } else {
            goOn(result);
        }
    });
}

void Context::inputDetach(const pps::Message &)
{
    if (m_input) {
        closeMedium([this](const Result &) {
            finish({});
            if (m_onIdle) {
                m_onIdle();
            }
        });
    } else {
        finish({});
    }
}

/** Shows that there is no medium, when the engine has nothing more to say about it. */
void Context::closeMedium(Engine::Answered done)
{
    const auto closed = [this, done = std::move(done)](const Result &) {
        m_isOpen = false;
        m_resume.reset();
        m_folder.clearMedium(m_position.track);
        m_total = 0;
        m_position = {};
        setState(State::Idle);
        done({});
    };
    // From here on nothing that happens to the worker is a matter of this medium.
    m_input.reset();
    if (m_isOpen) {
        m_engine->ask(requests::Close{}, closed);
    } else {
        closed({});
    }
}

} // namespace voro::renderer
