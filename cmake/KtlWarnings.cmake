# Warning flags shared by every target of the project. -Wshadow catches a local that hides a
# member or an outer local, the usual cause of a value set in the wrong place.
add_compile_options(-Wall -Wextra -Wshadow)
