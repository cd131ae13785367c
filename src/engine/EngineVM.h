#pragma once

#include "base/Files.h"
#include "base/Json.h"
#include "compliance/ControlClosure.h"
#include "compliance/OSSnapshot.h"
#include "compliance/RoleMap.h"
#include "compliance/SOC2Mesh.h"
#include "compliance/SOC2Templates.h"
#include "engine/AssistantActions.h"
#include "engine/NextBestAction.h"
#include "engine/Operation.h"
#include "engine/Published.h"
#include "engine/Records.h"
#include "engine/WorkQueue.h"
#include "intelligence/Assistant.h"
#include "intelligence/GenerableRecords.h"
#include "kernel/Extraction.h"
#include "kernel/Integrator.h"
#include "ledger/Log.h"
#include "ledger/Notify.h"
#include "ledger/Presence.h"
#include "ledger/RecordFile.h"
#include "ledger/TotemChain.h"
#include "ledger/UnwrittenRecords.h"
#include "ports/Ports.h"
#include "proof/FurtherSeals.h"
#include "proof/LineParser.h"
#include "proof/Package.h"
#include "proof/ProofKeeper.h"

#include <cstdint>
#include <deque>
#include <filesystem>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <vector>

namespace kelvo {

/// The two fixed directories, both below the person's home directory.
struct Directories {
    std::filesystem::path outputs; ///< readiness graph, role map, sealed records, policies
    std::filesystem::path project; ///< event log and chat history

    /// "bondgraphs/bondgraph/outputs" and "bondgraphs/kelvo-soc2-app" below `home`.
    static Directories below(const std::filesystem::path& home);
};

/// The engine: the one object that owns all state the person sees, starts everything, runs the
/// simulation and seals what was approved.
///
/// Everything runs on one thread, the engine's. Operations never throw and return nothing: each
/// reports through `status`, then a citation, then an event line; a refusal changes nothing else.
/// An operation called while the person is being asked something (a presence prompt, the file
/// panel) waits in the work queue and runs afterwards: `play` is what others call, `playNow` its
/// body, which only the queue's turn reaches. Every change of recorded state keeps one
/// order: presence check, mesh and readiness, chain, `totems`, record file, status, citation,
/// event, cards.
class EngineVM {
public:
    using Citations = RowsView<std::deque<Citation>, RowOrder::newestFirst>;
    using Totems = RowsView<TotemChain::Blocks, RowOrder::newestFirst>;
    using Chat = RowsView<std::deque<ChatMsg>, RowOrder::oldestFirst>;

    template <class... Arguments>
    using Operation = OperationOf<EngineVM, Arguments...>;

    /// Runs the whole start-up. Its steps report their own failures; it always completes.
    EngineVM(const Ports& ports, Directories directories);
    ~EngineVM();
    EngineVM(const EngineVM&) = delete;
    EngineVM& operator=(const EngineVM&) = delete;

    /// How the composition root says what `shared()` is made of, before anybody asks for it.
    using Factory = std::function<std::unique_ptr<EngineVM>()>;
    static void provideShared(Factory factory);

    /// The single instance, made on first access by the factory that was provided.
    static EngineVM& shared();

    // --- State that is published -----------------------------------------------------------------

    Published<std::string> equations; ///< multi-line description of the installed model
    Published<std::string> stateLine; ///< one-line readout of the integrator
    Published<bool> running{false};   ///< the run loop is active
    Published<double> t{0};           ///< integrator time, "totem-time"
    Published<double> risk{0};        ///< accumulated dissipation ∫R·f² dt
    Published<double> rate{0};        ///< dissipation rate at the current state
    Published<Totems> totems;         ///< the chain's blocks, newest first
    Published<std::string> status{"idle"};
    Published<Citations> citations; ///< provenance, newest first
    Published<std::optional<PendingMeasurement>> pending;
    Published<NBA> agentNBA;
    Published<NBA> humanNBA;
    Published<double> drive{1.0}; ///< effort of the source that the engine drives
    Published<std::string> reply; ///< latest answer of the assistant or to a voice request
    Published<Chat> chat;         ///< chat history, oldest first
    Published<bool> assistantBusy{false};
    Published<std::optional<Act>> proposedAction;
    Published<std::optional<std::string>> principal; ///< the verified person
    Published<std::optional<RoleMap>> roleMap;
    Published<std::optional<std::string>> role; ///< the verified person's role
    Published<std::set<std::string>> adopted;   ///< adopted control families
    Published<std::optional<std::string>> currentTemplate;
    Published<std::optional<SOC2Mesh>> mesh;
    Published<double> readiness{0}; ///< Σ(g·w)/Σw of the mesh
    Published<std::optional<EvidenceProposal>> evidenceProposal;
    Published<std::optional<GeneratedDoc>> generatedDoc;
    Published<std::vector<OSFact>> osFacts;
    Published<std::optional<Progress>> progress; ///< long work that is under way, if any
    Published<std::vector<ModelWork>> modelWork; ///< what the model is at, oldest first

    /// How records, logs, evidence and checkpoints compare; none before the first comparison.
    Published<std::shared_ptr<const ProofComparison>> proof;
    Published<std::vector<Unkept>> unkept; ///< decisions of which the proof lacks something yet
    Published<std::vector<UnwrittenRecords::Entry>>
        unwritten; ///< decisions that are not on the disk
    Published<std::map<std::string, EvidenceLook>>
        evidenceLooks;                                     ///< last look at kept evidence, by hash
    Published<std::optional<StoredCheckpoint>> checkpoint; ///< the last one made in this run
    Published<std::optional<PackageState>> package;        ///< the last hand-over of this run

    // --- State that is not -----------------------------------------------------------------------

    const std::optional<StateSpace>& space() const { return space_; }
    const Integrator* sim() const { return sim_ ? &*sim_ : nullptr; }
    const TotemChain& chain() const { return chain_; }
    double dt() const { return dt_; }
    double rateThreshold() const { return rateLimit; }
    const std::string& seID() const { return source_->id; }
    bool riskLatched() const { return riskLatched_; }
    const std::vector<SOC2Template>& templates() const { return SOC2Templates::all(); }
    const std::filesystem::path& outputsDir() const { return directories_.outputs; }
    std::filesystem::path chatURL() const { return directories_.project / "chat-history.json"; }

    // --- The model (EngineVM.cpp) ----------------------------------------------------------------

    /// Validates a proposed graph and makes it the running model; a refusal says "REJECTED: ".
    Operation<const ExtractedGraph&> load{*this, &EngineVM::loadNow};

    /// Installs a graph that was built from a spoken question, and answers in `reply`.
    Operation<const BondGraph&, const std::string&> siriBuilt{*this, &EngineVM::siriBuiltNow};
    Operation<const std::string&> siriSay{*this, &EngineVM::siriSayNow};

    // --- The run loop (RunLoop.cpp) --------------------------------------------------------------

    Operation<> play{*this, &EngineVM::playNow};
    /// Stops the run loop and stages the current state for sealing, also when it was not running.
    Operation<> pause{*this, &EngineVM::pauseNow};
    /// Halves the drive.
    Operation<> throttle{*this, &EngineVM::throttleNow};

    // --- Sealing (Sealing.cpp) -------------------------------------------------------------------

    /// Seals the staged measurement after a presence check.
    Operation<> bondCollapse{*this, &EngineVM::bondCollapseNow};

    // --- Readiness and gaps (Readiness.cpp, GapClosing.cpp) --------------------------------------

    /// Reads readiness graph and role map as at the start, where no graph has been read yet; what
    /// cannot be read is told as there. A graph that was read stays for the whole run.
    Operation<> readAgain{*this, &EngineVM::readAgainNow};
    /// Closes one criterion with an evidence file and a presence check.
    Operation<const std::string&> closeGap{*this, &EngineVM::closeGapNow};
    /// Recomputes both cards.
    void proposeNBA();
    Operation<const Act&> run{*this, &EngineVM::runNow};
    /// Mesh nodes that are met; 0 without a mesh.
    int metCount() const;

    // --- Roles (Roles.cpp) -----------------------------------------------------------------------

    std::vector<std::string> availableRoles() const;
    /// Those of `availableRoles` that are meant for the person of this account.
    std::vector<std::string> offeredRoles() const;
    /// Why no role is offered, in words for the person; empty where one is.
    std::string whyNoRole() const;
    std::vector<RoleMap::Control> roleControls() const;
    bool isRoleControlClosed(const RoleMap::Control& control) const;
    /// The closed share of the role's controls, or `readiness` for a role without controls.
    double roleReadiness() const;
    bool roleReadonly() const;
    /// The owner, verified: who decides for the organisation.
    bool mayDecide() const;
    std::optional<RoleMap::Control> nextRoleControl() const;

    /// Proves the person's identity and takes on `role`.
    Operation<const std::string&> verifyKYC{*this, &EngineVM::verifyKYCNow};
    /// Takes the identity off, so that the next person can verify theirs. Nothing is recorded.
    Operation<> leaveIdentity{*this, &EngineVM::leaveIdentityNow};
    /// Completes a control of the person's role in the way that the control names.
    Operation<const RoleMap::Control&> closeRoleControl{*this, &EngineVM::closeRoleControlNow};
    Operation<const RoleMap::Control&> attestRoleControl{*this, &EngineVM::attestRoleControlNow};

    // --- The device (DevicePosture.cpp) ----------------------------------------------------------

    /// Reads the device's security settings anew.
    Operation<> snapshotOS{*this, &EngineVM::snapshotOSNow};
    Operation<const RoleMap::Control&> closeRoleControlViaOS{*this,
                                                             &EngineVM::closeRoleControlViaOSNow};

    // --- Evidence, policies, assistant (Evidence.cpp, Policy.cpp, Chat.cpp) ----------------------

    /// Asks for a document and has the model propose criteria for it; nothing is recorded yet.
    Operation<> addEvidence{*this, &EngineVM::addEvidenceNow};
    /// Seals the staged document as evidence for each of `criteria` that is open.
    Operation<const std::vector<std::string>&> confirmEvidence{*this,
                                                               &EngineVM::confirmEvidenceNow};

    /// Has the model draft a policy from what the criterion's evidence text says.
    Operation<const std::string&> generatePolicy{*this, &EngineVM::generatePolicyNow};
    /// Writes the staged draft as a file, closes its criterion and seals both.
    Operation<> approveGenerated{*this, &EngineVM::approveGeneratedNow};
    Operation<> discardGenerated{*this, &EngineVM::discardGeneratedNow};

    /// Asks the assistant. A blank question is ignored; questions may overlap.
    Operation<const std::string&> askAssistant{*this, &EngineVM::askAssistantNow};
    /// The label of the step that the assistant proposed, if any.
    std::optional<std::string> proposedActionName() const;
    /// Runs the proposed step, once.
    Operation<> runProposed{*this, &EngineVM::runProposedNow};
    /// Gives up on every answer of the model that is still awaited: each counts as failed.
    void cancelModelWork();

    // --- Adoption (Adoption.cpp) -----------------------------------------------------------------

    /// Adds a control family to the system and installs the composed graph of all adopted ones.
    Operation<const SOC2Template&> adopt{*this, &EngineVM::adoptNow};

    // --- Proof (Proof.cpp) -----------------------------------------------------------------------

    /// Begins to keep the proof: reads the own log and compares, beside this thread. Called once
    /// the window shows; what is sealed before waits in memory.
    void beginProof();
    /// Compares records, logs and checkpoints anew. Calls while one is under way make one more.
    void compareProof();
    /// Writes again what is not on the disk or not in the proof; `now` without the pauses that
    /// large evidence is given.
    void keepAgain(bool now = false);
    /// Writes what is not on the disk into another folder, too.
    tl::expected<void, FileError> saveUnwritten(const std::filesystem::path& folder) const;

    /// Takes records that no log knows into the own log, after a presence check. The owner only.
    Operation<const std::vector<std::string>&> adoptRecords{*this, &EngineVM::adoptRecordsNow};
    /// Writes a record that is gone or was changed as it was sealed.
    Operation<const std::string&> restoreRecord{*this, &EngineVM::restoreRecordNow};
    /// Asks for the file of this hash, which was not kept, and keeps it after a presence check.
    Operation<const std::string&> supplyEvidence{*this, &EngineVM::supplyEvidenceNow};
    /// Hashes the kept file again; `evidenceLooks` has the result.
    void verifyEvidence(const std::string& root);
    /// Where the kept file of this hash is.
    std::filesystem::path keptFile(const std::string& root) const;
    /// Makes a checkpoint of the logs as last compared. The owner only.
    Operation<> makeCheckpoint{*this, &EngineVM::makeCheckpointNow};
    /// Stores a signature beside the checkpoint of that name.
    tl::expected<void, FileError> storeSignature(const std::string& checkpointFile,
                                                 const std::string& signature) const;

    // --- Further seals (FurtherSealing.cpp) ------------------------------------------------------
    // Each asks for presence with its own sentence, is chained and recorded, and changes no
    // readiness. `proof` then has it in `standing`.

    /// Sets what the audit looks at. The owner only; a Type I period is one day.
    Operation<const AuditPeriod&> setPeriod{*this, &EngineVM::setPeriodNow};
    /// Records which days evidence speaks of. Refused as a whole where an item lacks a day or
    /// speaks of days that are still to come.
    Operation<const std::vector<EvidenceItem>&> recordEvidenceDates{
        *this, &EngineVM::recordEvidenceDatesNow};
    /// Records an exception (also by whose task the criterion is), a withdrawal or a review (the
    /// owner). The latter two speak of a record.
    Operation<const Note&> recordNote{*this, &EngineVM::recordNoteNow};
    /// Asks for the file of one of the report's own documents, keeps and records it. The owner
    /// only.
    Operation<ReportDocument::Kind> recordDocument{*this, &EngineVM::recordDocumentNow};

    // --- Handing over (HandOver.cpp) -------------------------------------------------------------

    /// Hands an audit package over: all logs are read, the hand-over is sealed, the package is
    /// written into the folder `destination` beside this thread, and the log notes it. `package`
    /// tells how far it is. Refused where the proof is not whole, unless `anyway`. The owner only.
    Operation<const std::string&, const std::filesystem::path&, bool> handOver{
        *this, &EngineVM::handOverNow};
    /// How much of the package is written, 0 to 1.
    double packageShare() const;
    /// Stops the writing; what is written so far is removed.
    void stopPackage();

    // --- Work that comes from outside ------------------------------------------------------------

    /// Runs work in its turn: at once, or when nobody is being asked anything any more; never once
    /// the engine is gone. It may be called at any time and outlives the engine.
    class Resumption {
    public:
        /// `work` is called with a `Turn` or with nothing.
        template <class Work>
        void operator()(Work work) const {
            if (const auto engine = life_.lock()) (*engine)->queue_.submit(std::move(work));
        }

    private:
        friend class EngineVM;
        explicit Resumption(const std::shared_ptr<EngineVM*>& life) : life_(life) {}

        std::weak_ptr<EngineVM*> life_;
    };
    Resumption resumption();

private:
    template <class, class...>
    friend class OperationOf;

    using Exclusive = WorkQueue::Exclusive;

    /// The source that the engine drives. The integrator reads the effort at each evaluation and
    /// shares it, so that a copy of the integrator stays valid without the engine.
    struct DrivenSource {
        std::string id = "Se";
        double effort = 0;
    };

    /// The closing of one criterion: what the operation brings, and what closing it came to.
    struct Closing {
        /// The operation sets criterion, presence and evidence name, and the seal time where it is
        /// not that of the closing itself; `closeCriterion` sets the rest.
        ControlClosure facts;
        std::string title;           ///< of the totem
        StagedEvidence evidence;     ///< its hash is sealed, its bytes are kept
        Json extra = Json::object(); ///< the operation's own keys of the payload
        Totem totem{};               ///< set by `closeCriterion`

        /// "40.0%→47.7%"
        std::string readinessChange() const;
    };

    struct PackageWork;

    /// A document that was read and waits for its mapping.
    struct Document {
        std::string name;
        StagedEvidence evidence;
        std::string text{};
        std::vector<std::string> allowed{}; ///< criterion ids, in mesh order
    };

    // The bodies of the operations, in their order above
    void loadNow(const Turn& turn, const ExtractedGraph& graph);
    void siriBuiltNow(const Turn& turn, const BondGraph& graph, const std::string& question);
    void siriSayNow(const Turn& turn, const std::string& text);
    void playNow(const Turn& turn);
    void pauseNow(const Turn& turn);
    void throttleNow(const Turn& turn);
    void bondCollapseNow(const Turn& turn);
    void readAgainNow(const Turn& turn);
    void closeGapNow(const Turn& turn, const std::string& criterion);
    void runNow(const Turn& turn, const Act& act);
    void verifyDefaultRole(const Turn& turn);
    void verifyKYCNow(const Turn& turn, const std::string& role);
    void leaveIdentityNow(const Turn& turn);
    void closeRoleControlNow(const Turn& turn, const RoleMap::Control& control);
    void attestRoleControlNow(const Turn& turn, const RoleMap::Control& control);
    void snapshotOSNow(const Turn& turn);
    void closeRoleControlViaOSNow(const Turn& turn, const RoleMap::Control& control);
    void addEvidenceNow(const Turn& turn);
    void confirmEvidenceNow(const Turn& turn, const std::vector<std::string>& criteria);
    void generatePolicyNow(const Turn& turn, const std::string& criterion);
    void approveGeneratedNow(const Turn& turn);
    void discardGeneratedNow(const Turn& turn);
    void askAssistantNow(const Turn& turn, const std::string& question);
    void runProposedNow(const Turn& turn);
    void adoptNow(const Turn& turn, const SOC2Template& family);
    void adoptRecordsNow(const Turn& turn, const std::vector<std::string>& files);
    void restoreRecordNow(const Turn& turn, const std::string& file);
    void supplyEvidenceNow(const Turn& turn, const std::string& root);
    void makeCheckpointNow(const Turn& turn);
    void setPeriodNow(const Turn& turn, const AuditPeriod& period);
    void recordEvidenceDatesNow(const Turn& turn, const std::vector<EvidenceItem>& items);
    void recordNoteNow(const Turn& turn, const Note& note);
    void recordDocumentNow(const Turn& turn, ReportDocument::Kind kind);
    void handOverNow(const Turn& turn, const std::string& recipient,
                     const std::filesystem::path& destination, bool anyway);

    // Start-up
    void loadMesh();
    void loadRoleMap();
    void loadChat();

    // The model
    tl::expected<void, GraphError> install(const BondGraph& graph, const std::string& note);
    std::string describeModel() const;
    void renderState();
    Integrator makeIntegrator(const StateSpace& space) const;

    // The run loop
    void tick();
    PendingMeasurement measure() const;
    void setDrive(double effort);

    // Sealing
    Totem appendTotem(std::string_view payload, const std::string& title,
                      const std::string& presence, const std::string& asOf);
    std::string writeForBouncer(const Totem& totem, std::string_view payload,
                                const std::string& asOf,
                                const std::optional<StagedEvidence>& evidence = {});
    Totem seal(const Json& payload, const std::string& title, const std::string& presence,
               const std::string& asOf, const std::optional<StagedEvidence>& evidence = {});

    // Closing
    /// Closes and seals, after presence was given. There is a mesh and it has the criterion.
    void closeCriterion(Closing& closing);
    /// The one place where readiness changes: with the mesh.
    void showMesh(SOC2Mesh changed);
    std::optional<StagedEvidence> stageFile(const std::filesystem::path& file);

    // Proof
    void rememberFiles();
    void keepRecord(const Totem& totem, std::string_view payload, const RecordWriting& writing,
                    const std::optional<StagedEvidence>& evidence);
    void showUnkept();
    void startComparison(int tries);
    void takeComparison(const std::shared_ptr<const ProofComparison>& result, int tries);
    void showLook(const std::string& root, Verification result);
    const LoggedDecision* decisionWith(const std::string& root) const;
    bool mayRecord(const std::string& criterion) const;
    void askHandOver(const Turn& turn, const ProofComparison& read, bool anyway);
    void writeHandOver(const std::vector<HandedLog>& logs, std::vector<std::string> warnings,
                       bool anyway);
    void endHandOver(const tl::expected<PackageWritten, FileError>& outcome);
    void showPackage(PackageState::Stage stage, std::vector<std::string> reasons = {});
    /// False where presence was not given.
    bool sealFurther(const Exclusive& exclusive, const FurtherSeal& further,
                     const std::optional<StagedEvidence>& evidence = {});
    Approval approval() const;

    // The device
    void refreshFacts();

    // Evidence, policies, assistant
    void mapDocument(const Document& document, std::uint64_t work);
    void stageEvidence(const Document& document, const std::optional<EvidenceMapping>& mapping);
    void stagePolicy(const std::string& criterion, const std::optional<std::string>& text);
    tl::expected<void, FileError> writeArtifact(const std::string& name,
                                                const std::string& text) const;
    std::string assistantContext() const;
    void takeAnswer(const std::string& question, const std::optional<AssistantReply>& answer);
    void propose(const ProposedStep& step);
    void appendChat(const std::string& speaker, const std::string& text);

    // Work that is waited for
    /// Runs `task` later, through the queue, unless the engine is gone by then.
    void start(std::function<void()> task);

    /// Shows that the model is at something, until the matching end.
    std::uint64_t beginModelWork(std::string title);
    void endModelWork(std::uint64_t id);

    // Reporting
    void refuse(std::string statusText, std::string_view event, Json fields = Json::object());
    void cite(std::string claim, std::string source);
    std::string now() const;
    std::string accountName() const;     ///< full name of the account, or "Account owner"
    std::string ownerName() const;       ///< `principal`, or "unverified"
    std::string contributorRole() const; ///< `role`, or "contributor"
    std::string personName() const;      ///< `principal`, or "user"
    const SOC2Mesh::Node* criterionNode(std::string_view id) const;
    CardInputs cardInputs() const;

    // Asking the person, while nothing else can run
    Presence::Result provePresence(const Exclusive& exclusive, const std::string& sentence);
    std::optional<std::filesystem::path> chooseFile(const Exclusive& exclusive,
                                                    const FilePanelRequest& request);

    Ports ports_;
    Directories directories_;
    Log log_;
    Notify notify_;
    Presence presence_;
    WorkQueue queue_;
    /// Shared with the work beside this thread, which may end after the engine.
    std::shared_ptr<ProofKeeper> keeper_;
    UnwrittenRecords unwritten_;
    /// The staged document, for as long as its proposal stands.
    std::optional<StagedEvidence> proposedEvidence_;
    std::set<std::string> filesAtStart_; ///< record files that readiness was replayed from
    std::set<std::string> sealedFiles_;  ///< record files of this run
    bool proofBegun_ = false;
    bool comparing_ = false;
    std::shared_ptr<PackageWork> packageWork_; ///< shared with the writing
    bool compareAgain_ = false;
    std::deque<Citation> citationRows_;
    std::deque<ChatMsg> chatRows_;
    std::string encodedChat_; ///< the chat history file without its brackets
    bool proposedAddEvidence_ = false;
    std::optional<StateSpace> space_;
    std::optional<Integrator> sim_;
    TotemChain chain_;
    double dt_ = 0.01;
    std::shared_ptr<DrivenSource> source_;
    bool riskLatched_ = false;
    std::uint64_t modelWorkBegun_ = 0;
    /// Held weakly by whatever may call back after the engine is gone.
    std::shared_ptr<EngineVM*> life_;
};

} // namespace kelvo
