# The files of the pages. The scripts of a page are joined in this order, inside one function in strict mode.
set(RTIFED_MODEL_PAGE page.html page.css)
set(RTIFED_MODEL_SCRIPTS model.js)
set(RTIFED_INDEX_PAGE index.html index.css)
set(RTIFED_INDEX_SCRIPTS index.js)
set(RTIFED_PAGE_FILES ${RTIFED_MODEL_PAGE} ${RTIFED_MODEL_SCRIPTS} ${RTIFED_INDEX_PAGE} ${RTIFED_INDEX_SCRIPTS})
list(REMOVE_DUPLICATES RTIFED_PAGE_FILES)
