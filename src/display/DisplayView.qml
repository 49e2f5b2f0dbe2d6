import Tessivo.Display

/** The stage display of this computer's own state. */
StageView {
    content: LocalStageViewModel.content
}
