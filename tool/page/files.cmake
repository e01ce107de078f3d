# The files of the pages. Styles and scripts of a page are joined in this order, the scripts inside one function in strict mode.
set(RTIFED_MODEL_PAGE page.html)
set(RTIFED_MODEL_STYLES base.css page.css)
set(RTIFED_MODEL_SCRIPTS
    words.js model.js links.js changes.js findings.js search.js dom.js TreeView.js SearchBox.js parts.js membersTable.js
    overview.js classPage.js spacePage.js findingsPage.js changesPage.js printed.js Scrolling.js main.js)
set(RTIFED_INDEX_PAGE index.html)
set(RTIFED_INDEX_STYLES base.css index.css)
set(RTIFED_INDEX_SCRIPTS index.js)
set(RTIFED_PAGE_FILES
    ${RTIFED_MODEL_PAGE} ${RTIFED_MODEL_STYLES} ${RTIFED_MODEL_SCRIPTS}
    ${RTIFED_INDEX_PAGE} ${RTIFED_INDEX_STYLES} ${RTIFED_INDEX_SCRIPTS})
list(REMOVE_DUPLICATES RTIFED_PAGE_FILES)
